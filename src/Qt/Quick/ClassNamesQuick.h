#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <cstddef>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

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

    /// Takes note of the QML types that have been registered since the last call.
    void update();

    /// The class's own names, the plain one first, without those of its bases. As of the last update().
    [[nodiscard]] std::vector<std::string> namesOf(const QMetaObject& type);

    /// For each name whether an object in some window is of this class, or was when namesOf() was asked, or a
    /// QML type is registered under this name.
    [[nodiscard]] std::vector<bool> exist(const std::vector<std::string>& names);

 private:
    ClassNamesQuick() = default;

    /// What tells one QML type from another that has taken its place.
    struct Type {
        QString element;
        const QMetaObject* objects = nullptr;
        QUrl file;

        bool operator==(const Type&) const = default;
    };

    void add(const std::string& name, const std::string& element);
    [[nodiscard]] bool isKnown(const std::string& name);

    std::mutex mMutex;
    /// The QML type names of each C++ class and each QML file. By name and not by address: QML's own classes
    /// die.
    std::map<std::string, std::vector<std::string>, std::less<>> mTypeNames;
    /// All that is a name of some class met or registered so far.
    std::set<std::string, std::less<>> mKnown;
    /// The types in the tables, each at its index.
    std::vector<Type> mTypes;
};

}  // namespace merovanta::quick
