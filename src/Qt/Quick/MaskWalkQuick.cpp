#include "Qt/Quick/MaskWalkQuick.h"

#include <QtCore/QMetaProperty>
#include <QtCore/QUrl>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGNode>
#include <QtQuick/QSGRendererInterface>
#include <algorithm>
#include <cmath>
// The public interface does not show the classes of the items that QML knows, nor what effects do with them.
#include <private/qquickimagebase_p.h>
#include <private/qquickitem_p.h>
#include <private/qquickshadereffect_p.h>
#include <private/qquickshadereffectsource_p.h>
#include <private/qquicktextinput_p.h>

#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/PaintedAreaQuick.h"
#include "Qt/Quick/PlacementQuick.h"
#include "Qt/Quick/SceneGraphQuick.h"

namespace merovanta::quick {

namespace {

ViewContent contentOf(const QQuickItem& item, const ItemClassQuick& type) {
    if (type.isTextInput) {
        const auto& input = static_cast<const QQuickTextInput&>(item);
        return input.echoMode() == QQuickTextInput::Normal ? ViewContent::textInput
                                                           : ViewContent::hiddenInput;
    }
    if (type.isImage) {
        const auto& image = static_cast<const QQuickImageBase&>(item);
        return image.source().scheme() == u"itemgrabber" ? ViewContent::copy : ViewContent::picture;
    }
    // What it took its picture of may be gone by now, or private no more.
    if (type.isShaderEffectSource && !static_cast<const QQuickShaderEffectSource&>(item).live())
        return ViewContent::copy;
    if (type.content == ViewContent::other && !item.flags().testFlag(QQuickItem::ItemHasContents))
        return ViewContent::plain;
    return type.content;
}

bool isInEffect(const QQuickItem& item) {
    const auto& extra = QQuickItemPrivate::get(&item)->extra;
    return extra.isAllocated() && extra->effectRefCount > 0;
}

bool hasLayerEffect(const QQuickItem& item) {
    const auto& extra = QQuickItemPrivate::get(&item)->extra;
    return extra.isAllocated() && extra->layer != nullptr && extra->layer->enabled() &&
           extra->layer->effect() != nullptr;
}

/// Has the processor fetch what the walk is about to read of the item. With thousands of items the walk would
/// spend most of its time waiting for memory.
void fetch(const QQuickItem& item) {
    constexpr std::size_t cacheLine = 64;
    const char* const details = reinterpret_cast<const char*>(QQuickItemPrivate::get(&item));
    for (std::size_t offset = cacheLine; offset < sizeof(QQuickItemPrivate); offset += cacheLine)
        __builtin_prefetch(details + offset);
}

/// Whether the matrix takes upright rectangles to upright ones.
bool keepsUpright(const QMatrix4x4& matrix) {
    const bool isFlat = matrix(3, 0) == 0 && matrix(3, 1) == 0;
    const bool isStraight = matrix(0, 1) == 0 && matrix(1, 0) == 0;
    const bool isQuarterTurn = matrix(0, 0) == 0 && matrix(1, 1) == 0;
    return isFlat && (isStraight || isQuarterTurn);
}

bool contains(const QRectF& outer, const QRectF& inner) {
    return outer.left() <= inner.left() && outer.top() <= inner.top() && outer.right() >= inner.right() &&
           outer.bottom() >= inner.bottom();
}

/// Whether all that is in the item shows just where it is, and nothing through it.
bool isShownAsItIs(const QQuickItem& item) {
    const QQuickItemPrivate& details = *QQuickItemPrivate::get(&item);
    return item.isVisible() && !details.culled && details.opacity() >= 1 && !isInEffect(item);
}

}  // namespace

MaskWalkQuick::MaskWalkQuick(const QQuickWindow& window, MaskJudge& judge)
    : mWindow(window),
      mJudge(judge),
      mClasses(judge),
      mIsSoftware(window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software),
      mWindowSight(sightOf(window)) {}

void MaskWalkQuick::run() {
    mJudge.begin(MerovantaQuick::isAnyMasked());
    visit(*mWindow.contentItem(), true);
    coverEffects();
    dropWhatDoesNotShow();
}

void MaskWalkQuick::visit(QQuickItem& item, bool isPainted) {
    const ItemClassQuick& type = mClasses.of(*item.metaObject());
    mSteps.push_back({.item = &item});
    const std::size_t depth = mSteps.size() - 1;
    if (depth > 0) mSteps[depth].covered = mSteps[depth - 1].covered;
    const MarksQuick* const marks = MerovantaQuick::marksOf(item);
    const MaskVerdict verdict = judge(item, type, marks, false);
    const bool isHidden = isPainted && isTransparent(item);
    const bool isShown = isPainted && !isHidden;
    mSteps[depth].isPrivate = verdict.reason.has_value();
    if (verdict.reason) cover(item, type, verdict, isShown);
    if (verdict.kind == MaskArea::Kind::exempt && isShown) exempt(item);
    if (verdict.paintsFixed) addFixed(item, verdict);
    const bool isOpen = !verdict.reason && verdict.kind != MaskArea::Kind::exempt;
    if (marks != nullptr && marks->isGround && isOpen && isShown) addGround(item);
    if (type.isShaderEffectSource || type.isShaderEffect) {
        if (auto sources = sourcesOf(item, type); !sources.empty())
            addEffect(item, std::move(sources), isShown);
    }
    visitChildren(item, isShown);
    mJudge.leave();

    const bool isPrivate = mSteps[depth].isPrivate;
    // What shows again in this very frame would have to be covered.
    if (isHidden && isPrivate) mGeometry.addTransparent(*QQuickItemPrivate::get(&item)->opacityNode());
    if (isInEffect(item)) mSources.insert(&item, isPrivate);
    mSteps.pop_back();
    if (isPrivate && depth > 0) mSteps[depth - 1].isPrivate = true;
}

void MaskWalkQuick::visitChildren(QQuickItem& item, bool isPainted) {
    const auto children = inPaintOrder(item);
    constexpr qsizetype ahead = 8;
    for (qsizetype index = 0; index < std::min(ahead, children.size()); ++index)
        fetch(*children[index]);
    bool hasLayerEffects = false;
    for (qsizetype index = 0; index < children.size(); ++index) {
        QQuickItem& child = *children[index];
        if (index + ahead < children.size()) fetch(*children[index + ahead]);
        if (mayBePainted(child)) visit(child, isPainted);
        hasLayerEffects |= hasLayerEffect(child);
    }
    if (hasLayerEffects) visitLayerEffects(children, isPainted);
}

MaskVerdict MaskWalkQuick::judge(const QQuickItem& item, const ItemClassQuick& type, const MarksQuick* marks,
                                 bool isAgain) {
    ViewTraits traits{.content = contentOf(item, type), .classEntries = &type.entries, .isAgain = isAgain};
    const auto take = [&traits](const MarksQuick& from) {
        if (traits.tag == 0) traits.tag = from.tag;
        if (!traits.masked) traits.masked = from.masked;
        traits.isOwn |= from.isOwn;
    };
    if (marks != nullptr) take(*marks);
    // Neither is an item itself: known in the view tree by the item that shows them.
    const QObject* owner = nullptr;
    if (type.isPopupItem) owner = item.parent();
    if (&item == mWindow.contentItem()) owner = &mWindow;
    if (owner != nullptr) {
        if (const auto* const own = MerovantaQuick::marksOf(*owner)) take(*own);
        const auto& entries = mClasses.of(*owner->metaObject()).entries;
        mEntries = type.entries;
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(mEntries), [&](std::size_t entry) {
            return std::find(type.entries.begin(), type.entries.end(), entry) == type.entries.end();
        });
        traits.classEntries = &mEntries;
    }
    return mJudge.enter(traits);
}

bool MaskWalkQuick::isTransparent(const QQuickItem& item) const {
    const QQuickItemPrivate& details = *QQuickItemPrivate::get(&item);
    if (details.opacity() > 0 || isInEffect(item)) return false;
    const QSGOpacityNode* const node = details.opacityNode();
    return node != nullptr && node->opacity() <= 0;
}

void MaskWalkQuick::cover(const QQuickItem& item, const ItemClassQuick& type, const MaskVerdict& verdict,
                          bool isShown) {
    __builtin_prefetch(QQuickItemPrivate::get(&item)->paintNode);
    Step& step = placed();
    const bool hasContents = item.flags().testFlag(QQuickItem::ItemHasContents);
    if (!verdict.isNamed && !hasContents) return;
    const auto painted = paintedArea(item, type, mIsSoftware);
    mGeometry.addArea(step.frozen, painted, !isShown);
    const QRectF rect = pixelsOf(step.sight, painted);
    if (!isShown || rect.isEmpty()) return;
    const bool isRedundant = contains(step.covered, rect);
    addArea(rect, verdict.kind, verdict, {isRedundant, mGrounds.count()});
    if (!isRedundant) step.covered = rect;
}

void MaskWalkQuick::exempt(const QQuickItem& item) {
    const SightQuick& sight = placed().sight;
    if (!keepsUpright(sight.matrix)) return;
    const auto place = mapped(sight.matrix, QRectF(QPointF(), item.size()).normalized());
    if (!place) return;
    // Inwards: what shows at its edge is not its own.
    const double left = std::max(std::ceil(place->left() * sight.scale), sight.shown.left());
    const double top = std::max(std::ceil(place->top() * sight.scale), sight.shown.top());
    const double right = std::min(std::floor(place->right() * sight.scale), sight.shown.right());
    const double bottom = std::min(std::floor(place->bottom() * sight.scale), sight.shown.bottom());
    if (left >= right || top >= bottom) return;
    addArea({left, top, right - left, bottom - top}, MaskArea::Kind::exempt, {}, {});
}

void MaskWalkQuick::addFixed(const QQuickItem& item, const MaskVerdict& verdict) {
    // The frame is taken as if it were in the item's own coordinates.
    const QRectF rect =
        item.mapRectToItem(mWindow.contentItem(), QRectF(item.x(), item.y(), item.width(), item.height()));
    addArea(rect, MaskArea::Kind::fixed, verdict, {});
}

void MaskWalkQuick::addArea(const QRectF& rect, MaskArea::Kind kind, const MaskVerdict& verdict,
                            const Note& note) {
    mAreas.push_back(
        {{rect.x(), rect.y(), rect.width(), rect.height()}, kind, verdict.reason.value_or(MaskReason())});
    mNotes.push_back(note);
}

void MaskWalkQuick::addGround(const QQuickItem& item) {
    placed();
    // Its rectangle may not have been painted yet.
    bool isSolid = QQuickItemPrivate::get(&item)->paintNode != nullptr;
    QRectF hidden = mWindowSight.shown;
    for (const Step& step : mSteps) {
        const bool isItem = step.item == &item;
        isSolid = isSolid && isShownAsItIs(*step.item);
        if (const auto* const node = QQuickItemPrivate::get(step.item)->opacityNode())
            mGeometry.addOpaque(*node);
        if (!isItem && !step.item->clip()) continue;
        const QRectF area = isItem ? QRectF(QPointF(), item.size()) : step.item->clipRect();
        const auto within = pixelsWithin(step.sight, area, QSizeF(mWindow.size()) * mWindowSight.scale);
        hidden &= within.value_or(QRectF());
    }
    if (isSolid && !hidden.isEmpty()) mGrounds.add(hidden);
}

MaskWalkQuick::Step& MaskWalkQuick::placed() {
    std::size_t first = mSteps.size();
    while (first > 0 && !mSteps[first - 1].isPlaced)
        --first;
    for (; first < mSteps.size(); ++first)
        placeStep(first);
    return mSteps.back();
}

void MaskWalkQuick::placeStep(std::size_t index) {
    const QQuickItem& item = *mSteps[index].item;
    const Step* const outer = index == 0 ? nullptr : &mSteps[index - 1];
    SightStepQuick step{.place = placementOf(item), .isLayered = layerOf(item) != nullptr};
    // The software renderer knows no depth, and neither does a layer's picture of what is in it.
    step.isOnPlane = outer != nullptr && (mIsSoftware || layerOf(*outer->item) != nullptr);
    if (item.clip()) step.clip = item.clipRect();
    mSteps[index].isPlaced = true;
    mSteps[index].sight = sightIn(outer == nullptr ? mWindowSight : outer->sight, step);
    mSteps[index].frozen =
        mGeometry.add(item, step, outer == nullptr ? std::nullopt : std::optional(outer->frozen));
}

std::vector<QQuickItem*> MaskWalkQuick::sourcesOf(QQuickItem& item, const ItemClassQuick& type) const {
    std::vector<QQuickItem*> sources;
    if (type.isShaderEffectSource) {
        QQuickItem* const source = static_cast<const QQuickShaderEffectSource&>(item).sourceItem();
        const QQuickItemLayer* const layer = source == nullptr ? nullptr : layerOf(*source);
        // A layer that shows what is in it just where that is adds no place to it.
        const bool isPlain =
            layer != nullptr && layer->effectSource() == &item && !isRearranging(*layer, *source);
        if (source != nullptr && !isPlain) sources.push_back(source);
    }
    if (type.isShaderEffect) {
        const QMetaObject& details = *item.metaObject();
        for (int index = QQuickShaderEffect::staticMetaObject.propertyCount();
             index < details.propertyCount(); ++index) {
            const QVariant value = details.property(index).read(&item);
            auto* const source = qobject_cast<QQuickItem*>(value.value<QObject*>());
            if (source != nullptr) sources.push_back(source);
        }
    }
    if (QQuickItem* const layered = mLayerEffects.value(&item)) sources.push_back(layered);
    return sources;
}

void MaskWalkQuick::visitLayerEffects(const QList<QQuickItem*>& siblings, bool isPainted) {
    noteLayerEffects(siblings);
    for (QQuickItem* const sibling : siblings) {
        QQuickItem* const layered = mLayerEffects.value(sibling);
        if (layered == nullptr || !mayBePainted(*sibling)) continue;
        mSteps.push_back({.item = sibling});
        addEffect(*sibling, {layered}, isPainted && !isTransparent(*sibling));
        mSteps.pop_back();
    }
}

void MaskWalkQuick::noteLayerEffects(const QList<QQuickItem*>& siblings) {
    for (QQuickItem* const layered : siblings) {
        if (!hasLayerEffect(*layered)) continue;
        const QQuickItemLayer* const layer = layerOf(*layered);
        // The layer does not tell which item is its effect, but the effect knows the layer.
        for (const QQuickItem* const sibling : siblings) {
            if (sibling == layered || sibling == layer->effectSource()) continue;
            if (sibling->property(layer->name()).value<QObject*>() == layer->effectSource())
                mLayerEffects.insert(sibling, layered);
        }
    }
}

void MaskWalkQuick::addEffect(QQuickItem& item, std::vector<QQuickItem*> sources, bool isPainted) {
    const Step& step = placed();
    Effect effect{.item = &item,
                  .sources = std::move(sources),
                  .frozen = step.frozen,
                  .grounds = mGrounds.count(),
                  .isPainted = isPainted};
    effect.painted = paintedArea(item, mClasses.of(*item.metaObject()), mIsSoftware);
    effect.area = pixelsOf(step.sight, effect.painted);
    mEffects.push_back(std::move(effect));
}

void MaskWalkQuick::coverEffects() {
    bool hasChanged = !mEffects.empty();
    while (hasChanged) {
        hasChanged = false;
        for (Effect& effect : mEffects) {
            const bool isNew = !effect.isCovered &&
                               std::any_of(effect.sources.begin(), effect.sources.end(),
                                           [this](QQuickItem* source) { return showsPrivate(*source); });
            if (!isNew) continue;
            hasChanged = effect.isCovered = true;
            noteCovered(*effect.item);
            mGeometry.addArea(effect.frozen, effect.painted, !effect.isPainted);
            if (!effect.isPainted) continue;
            addArea(effect.area, MaskArea::Kind::cover, {}, {false, effect.grounds});
        }
    }
}

void MaskWalkQuick::noteCovered(const QQuickItem& effect) {
    for (const QQuickItem* item = &effect; item != nullptr; item = item->parentItem()) {
        const auto source = mSources.find(item);
        if (source != mSources.end()) *source = true;
    }
}

bool MaskWalkQuick::showsPrivate(QQuickItem& source) {
    const auto known = mSources.constFind(&source);
    if (known != mSources.cend()) return *known;
    // Until it is known otherwise: it may be shown in itself.
    mSources.insert(&source, false);
    std::vector<QQuickItem*> path;
    for (QQuickItem* item = source.parentItem(); item != nullptr; item = item->parentItem())
        path.push_back(item);
    bool isPrivate = false;
    bool isAgain = !path.empty() && path.back() == mWindow.contentItem();
    for (auto item = path.rbegin(); item != path.rend(); ++item) {
        isAgain = isAgain && (*item == mWindow.contentItem() || mayBePainted(**item));
        const ItemClassQuick& type = mClasses.of(*(*item)->metaObject());
        isPrivate |= judge(**item, type, MerovantaQuick::marksOf(**item), isAgain).reason.has_value();
    }
    std::vector<QQuickItem*> inner;
    isPrivate |= isPrivateWithin(source, isAgain && mayBePainted(source), inner);
    for (std::size_t count = 0; count < path.size(); ++count)
        mJudge.leave();
    isPrivate = isPrivate || std::any_of(inner.begin(), inner.end(),
                                         [this](QQuickItem* item) { return showsPrivate(*item); });
    mSources.insert(&source, isPrivate);
    return isPrivate;
}

bool MaskWalkQuick::isPrivateWithin(QQuickItem& item, bool isAgain, std::vector<QQuickItem*>& sources) {
    const ItemClassQuick& type = mClasses.of(*item.metaObject());
    const MaskVerdict verdict = judge(item, type, MerovantaQuick::marksOf(item), isAgain);
    if (verdict.paintsFixed) addFixed(item, verdict);
    const auto own = sourcesOf(item, type);
    sources.insert(sources.end(), own.begin(), own.end());
    bool isPrivate = verdict.reason.has_value();
    const auto children = inPaintOrder(item);
    noteLayerEffects(children);
    for (QQuickItem* const child : children) {
        if (mayBePainted(*child)) isPrivate |= isPrivateWithin(*child, isAgain, sources);
    }
    mJudge.leave();
    return isPrivate;
}

void MaskWalkQuick::dropWhatDoesNotShow() {
    const bool hasExempt = std::any_of(mAreas.begin(), mAreas.end(), [](const MaskArea& each) {
        return each.kind == MaskArea::Kind::exempt;
    });
    std::vector<MaskArea> visible;
    visible.reserve(mAreas.size());
    for (std::size_t index = 0; index < mAreas.size(); ++index) {
        const Note& note = mNotes[index];
        if (hasExempt || !note.isRedundant) mGrounds.appendVisible(mAreas[index], note.grounds, visible);
    }
    mAreas = std::move(visible);
}

}  // namespace merovanta::quick
