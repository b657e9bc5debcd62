#include "Qt/Quick/ItemClassesQuick.h"

#include <QtQuick/QQuickItem>
#include <algorithm>
#include <string_view>
// The public interface does not show the classes of the items that QML knows.
#include <private/qquickimagebase_p.h>
#include <private/qquickrectangle_p.h>
#include <private/qquickshadereffect_p.h>
#include <private/qquickshadereffectsource_p.h>
#include <private/qquicktext_p.h>
#include <private/qquicktextedit_p.h>
#include <private/qquicktextinput_p.h>

#include "Qt/Quick/ClassNamesQuick.h"

namespace merovanta::quick {

namespace {

/// Whether the name is one of these.
template <typename... Names>
bool isAny(std::string_view name, Names... names) {
    return ((name == names) || ...);
}

template <typename Text>
QFont fontOf(const QQuickItem& text) {
    return static_cast<const Text&>(text).font();
}

/// What this very class adds to what its base is. The classes of other modules are known by name: those may
/// well not be there.
void specialize(ItemClassQuick& facts, const QMetaObject& type) {
    const std::string_view name = type.className();
    if (&type == &QQuickItem::staticMetaObject) {
        facts.content = ViewContent::other;
    } else if (&type == &QQuickRectangle::staticMetaObject) {
        facts.content = ViewContent::plain;
    } else if (&type == &QQuickText::staticMetaObject) {
        facts.content = ViewContent::text;
        facts.fontOf = fontOf<QQuickText>;
    } else if (&type == &QQuickTextEdit::staticMetaObject) {
        facts.content = ViewContent::textInput;
        facts.fontOf = fontOf<QQuickTextEdit>;
    } else if (&type == &QQuickTextInput::staticMetaObject) {
        facts.content = ViewContent::textInput;
        facts.isTextInput = true;
        facts.fontOf = fontOf<QQuickTextInput>;
    } else if (&type == &QQuickImageBase::staticMetaObject) {
        facts.content = ViewContent::picture;
        facts.isImage = true;
    } else if (&type == &QQuickShaderEffectSource::staticMetaObject) {
        facts.isShaderEffectSource = true;
    } else if (&type == &QQuickShaderEffect::staticMetaObject) {
        facts.isShaderEffect = true;
    } else if (isAny(name, "QQuickPopupItem")) {
        facts.isPopupItem = true;
    } else if (isAny(name, "QQuickParticlePainter")) {
        facts.paintsAnywhere = true;
    } else if (isAny(name, "QQuickWebEngineView", "QQuickWebView")) {
        facts.content = ViewContent::page;
    } else if (isAny(name, "QQuickVideoOutput", "QQuickCanvasItem", "QQuickAnimatedSprite",
                     "QQuickSpriteSequence", "QQuickPaintedItem", "QQuickPdfPageImage")) {
        facts.content = ViewContent::picture;
        facts.isCanvas = name == "QQuickCanvasItem";
    }
}

}  // namespace

ItemClassesQuick::ItemClassesQuick(const MaskJudge& judge) : mJudge(judge) {
    ClassNamesQuick::instance().update();
}

const ItemClassQuick& ItemClassesQuick::of(const QMetaObject& type) {
    const auto known = mKnown.constFind(&type);
    if (known != mKnown.cend()) return **known;
    ItemClassQuick facts = type.superClass() == nullptr ? ItemClassQuick() : of(*type.superClass());
    for (const auto& name : ClassNamesQuick::instance().namesOf(type)) {
        const auto entry = mJudge.classEntry(name);
        const bool isNew =
            entry && std::find(facts.entries.begin(), facts.entries.end(), *entry) == facts.entries.end();
        if (isNew) facts.entries.push_back(*entry);
    }
    specialize(facts, type);
    const ItemClassQuick& kept = mClasses.emplace_back(std::move(facts));
    mKnown.insert(&type, &kept);
    return kept;
}

}  // namespace merovanta::quick
