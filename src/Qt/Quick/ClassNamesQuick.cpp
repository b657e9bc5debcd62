#include "Qt/Quick/ClassNamesQuick.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMetaObject>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cstring>
#include <iterator>
// The public interface has no way from a C++ class to the QML types made of it.
#include <private/qqmlmetatype_p.h>
#include <private/qqmltype_p.h>

#include "Qt/Quick/PopupsQuick.h"

namespace merovanta::quick {

namespace {

/// The length of the name without endings such as "_QMLTYPE_7" and "_QML_12", of which there may be several.
std::size_t plainLength(std::string_view name) {
    for (;;) {
        const auto end = name.find_last_not_of("0123456789");
        if (end == std::string_view::npos || end + 1 == name.size()) return name.size();
        const std::string_view rest = name.substr(0, end + 1);
        if (rest.ends_with("_QMLTYPE_")) {
            name.remove_suffix(name.size() - rest.size() + std::strlen("_QMLTYPE_"));
        } else if (rest.ends_with("_QML_")) {
            name.remove_suffix(name.size() - rest.size() + std::strlen("_QML_"));
        } else {
            return name.size();
        }
    }
}

std::string_view plain(const char* name) {
    return std::string_view(name, plainLength(name));
}

/// What objects of this QML type are called; one that is written in QML is called by its file.
std::string objectName(const QQmlType& type) {
    if (type.isComposite()) return QFileInfo(type.sourceUrl().path()).completeBaseName().toStdString();
    return type.baseMetaObject() == nullptr ? std::string() : type.baseMetaObject()->className();
}

/// Adds the plain names of all classes that the item and those in it are of.
void addNames(const QQuickItem& item, ClassNamesQuick& names, std::set<const QMetaObject*>& seen) {
    const auto addObject = [&](const QObject& object) {
        for (const QMetaObject* type = object.metaObject(); type != nullptr; type = type->superClass()) {
            if (!seen.insert(type).second) return;
            static_cast<void>(names.namesOf(*type));
        }
    };
    addObject(item);
    // A popup is no item itself; it is known in the view tree by the item that shows it.
    if (const QObject* const popup = popupShownBy(item)) addObject(*popup);
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        addNames(*child, names, seen);
}

/// Of everything in every window.
void addNamesInWindows(ClassNamesQuick& names) {
    std::set<const QMetaObject*> seen;
    const auto windows = QGuiApplication::topLevelWindows();
    for (const QWindow* window : windows) {
        const auto* const quickWindow = qobject_cast<const QQuickWindow*>(window);
        if (quickWindow == nullptr) continue;
        for (const QMetaObject* type = quickWindow->metaObject(); type != nullptr; type = type->superClass())
            static_cast<void>(names.namesOf(*type));
        addNames(*quickWindow->contentItem(), names, seen);
    }
}

}  // namespace

ClassNamesQuick& ClassNamesQuick::instance() {
    static auto* const names = new ClassNamesQuick();
    return *names;
}

std::string ClassNamesQuick::className(const QObject& object) {
    return std::string(plain(object.metaObject()->className()));
}

bool ClassNamesQuick::isKindOf(const QObject& object, std::string_view name) {
    update();
    for (const QMetaObject* type = object.metaObject(); type != nullptr; type = type->superClass()) {
        const auto names = namesOf(*type);
        if (std::find(names.begin(), names.end(), name) != names.end()) return true;
    }
    const QObject* const popup = popupShownBy(object);
    return popup != nullptr && isKindOf(*popup, name);
}

void ClassNamesQuick::update() {
    const auto types = QQmlMetaType::qmlTypes();
    const std::scoped_lock lock(mMutex);
    for (const QQmlType& type : types) {
        // The places of types that are gone are given to others.
        const auto place = static_cast<std::size_t>(std::max(type.index(), 0));
        if (place >= mTypes.size()) mTypes.resize(place + 1);
        Type now{type.elementName(), type.isComposite() ? nullptr : type.baseMetaObject(),
                 type.isComposite() ? type.sourceUrl() : QUrl()};
        if (mTypes[place] == now) continue;
        mTypes[place] = std::move(now);
        add(objectName(type), type.elementName().toStdString());
    }
}

void ClassNamesQuick::add(const std::string& name, const std::string& element) {
    if (!name.empty()) mKnown.insert(name);
    if (element.empty()) return;
    mKnown.insert(element);
    auto& names = mTypeNames[name];
    if (std::find(names.begin(), names.end(), element) == names.end()) names.push_back(element);
}

std::vector<std::string> ClassNamesQuick::namesOf(const QMetaObject& type) {
    const std::string_view name = plain(type.className());
    const std::scoped_lock lock(mMutex);
    if (!mKnown.contains(name)) mKnown.emplace(name);
    std::vector<std::string> names{std::string(name)};
    const auto others = mTypeNames.find(name);
    if (others != mTypeNames.end()) {
        std::copy_if(others->second.begin(), others->second.end(), std::back_inserter(names),
                     [name](const std::string& other) { return other != name; });
    }
    return names;
}

std::vector<bool> ClassNamesQuick::exist(const std::vector<std::string>& names) {
    update();
    const auto areKnown = [&] {
        std::vector<bool> known;
        for (const std::string& name : names)
            known.push_back(isKnown(name));
        return known;
    };
    auto known = areKnown();
    if (std::find(known.begin(), known.end(), false) == known.end()) return known;
    addNamesInWindows(*this);
    return areKnown();
}

bool ClassNamesQuick::isKnown(const std::string& name) {
    const std::scoped_lock lock(mMutex);
    return mKnown.contains(name);
}

}  // namespace merovanta::quick
