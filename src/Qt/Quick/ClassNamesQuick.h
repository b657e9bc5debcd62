#pragma once

#include <QtCore/QObject>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class QQuickItem;

namespace merovanta::quick {

/// What the classes of QML and C++ objects are called.
///
/// An object is of the QML types and C++ classes that it derives from, under their plain names: without the
/// suffix that the engine adds to make names unique. A C++ class and a QML file also answer to the names
/// under which they are registered as QML types.
///
/// Thread: main, or one that runs while the main thread stands still; the lock is for the passage between
/// them.
class ClassNamesQuick {
 public:
    ClassNamesQuick(const ClassNamesQuick&) = delete;
    ClassNamesQuick& operator=(const ClassNamesQuick&) = delete;

    [[nodiscard]] static ClassNamesQuick& instance();

    [[nodiscard]] static std::string className(const QObject& object);
    [[nodiscard]] bool isKindOf(const QObject& object, std::string_view name);

    /// Whether an object in some window is of this class, or was when it was last asked for, or a QML type is
    /// registered under this name.
    [[nodiscard]] bool exists(std::string_view name);

 private:
    ClassNamesQuick() = default;

    bool isRegisteredAs(const char* className, std::string_view name);
    bool isInTree(const QQuickItem& item, std::string_view name);
    bool isInAnyWindow(std::string_view name);
    bool isRegistered(std::string_view name);

    std::mutex mMutex;
    /// The QML type names of each C++ class met so far. By name and not by address: QML's own classes die.
    std::map<std::string, std::vector<std::string>, std::less<>> mTypeNames;
    std::set<std::string, std::less<>> mKnown;
    /// Names that were looked up in vain when so many types were registered.
    std::map<std::string, qsizetype, std::less<>> mUnknown;
};

}  // namespace merovanta::quick
