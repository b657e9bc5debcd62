#include "Qt/Quick/ClassNamesQuick.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMetaObject>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cstring>
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

bool isPlainName(std::string_view className, std::string_view name) {
    return className.starts_with(name) && plainLength(className) == name.size();
}

/// Whether objects of the QML type are of this class; one that is written in QML is called by its file.
bool isMadeOf(const QQmlType& type, std::string_view className) {
    if (type.isComposite()) {
        return QFileInfo(type.sourceUrl().path()).completeBaseName().toStdString() == className;
    }
    return type.metaObject() != nullptr && type.metaObject()->className() == className;
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
    for (const QMetaObject* type = object.metaObject(); type != nullptr; type = type->superClass()) {
        if (isPlainName(type->className(), name) || isRegisteredAs(type->className(), name)) return true;
    }
    // A popup is no item itself; it is known in the view tree by the item that shows it.
    const QObject* const popup = popupShownBy(object);
    return popup != nullptr && isKindOf(*popup, name);
}

bool ClassNamesQuick::exists(std::string_view name) {
    {
        const std::scoped_lock lock(mMutex);
        if (mKnown.contains(name)) return true;
    }
    if (!isInAnyWindow(name) && !isRegistered(name)) return false;
    const std::scoped_lock lock(mMutex);
    mKnown.emplace(name);
    return true;
}

bool ClassNamesQuick::isRegisteredAs(const char* className, std::string_view name) {
    const std::string_view key = plain(className);
    const std::scoped_lock lock(mMutex);
    auto found = mTypeNames.find(key);
    if (found == mTypeNames.end()) {
        std::vector<std::string> names;
        const auto types = QQmlMetaType::qmlTypes();
        for (const QQmlType& type : types) {
            if (!type.elementName().isEmpty() && isMadeOf(type, key))
                names.push_back(type.elementName().toStdString());
        }
        found = mTypeNames.emplace(key, std::move(names)).first;
    }
    return std::find(found->second.begin(), found->second.end(), name) != found->second.end();
}

bool ClassNamesQuick::isInTree(const QQuickItem& item, std::string_view name) {
    if (isKindOf(item, name)) return true;
    const auto children = item.childItems();
    return std::any_of(children.begin(), children.end(),
                       [&](const QQuickItem* child) { return isInTree(*child, name); });
}

bool ClassNamesQuick::isInAnyWindow(std::string_view name) {
    const auto windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), [&](const QWindow* window) {
        const auto* const quickWindow = qobject_cast<const QQuickWindow*>(window);
        return quickWindow != nullptr && isInTree(*quickWindow->contentItem(), name);
    });
}

bool ClassNamesQuick::isRegistered(std::string_view name) {
    const std::scoped_lock lock(mMutex);
    const auto types = QQmlMetaType::qmlTypes();
    const auto known = mUnknown.find(name);
    if (known != mUnknown.end() && known->second == types.size()) return false;
    const QString wanted = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    const bool found = std::any_of(types.begin(), types.end(), [&](const QQmlType& type) {
        return type.elementName() == wanted || isMadeOf(type, name);
    });
    if (found) {
        // The types of a module that was loaded since may be other names of classes met before.
        mTypeNames.clear();
    } else {
        mUnknown.insert_or_assign(std::string(name), types.size());
    }
    return found;
}

}  // namespace merovanta::quick
