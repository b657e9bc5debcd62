#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtQml/QJSValue>
#include <functional>
#include <optional>
#include <string>

namespace merovanta::quick {

/// A function of a script's that the library calls later. What it throws is reported as an error of the QML
/// engine's, with the place where it was thrown; nothing else comes of it.
class CallbackQuick {
 public:
    /// The facade is the object whose operation the function was given to.
    CallbackQuick(const QObject& facade, QJSValue function);

    void operator()(const QJSValueList& arguments) const;

    /// Nothing for undefined and null; what is no function is an error that is thrown into the calling
    /// script, and isRefused says so.
    [[nodiscard]] static std::optional<CallbackQuick> of(const QObject& facade, const QJSValue& function,
                                                         bool& isRefused);

    /// Throws a TypeError into the script that calls the facade, or what is attached to its object, just now.
    static void throwTypeError(const QObject& facade, const QString& message);

 private:
    QPointer<QObject> mScriptObject;
    QJSValue mFunction;
};

/// The text of an error for a script, undefined without one.
[[nodiscard]] QJSValue errorValue(const std::optional<std::string>& error);

/// Calls the function with the error, or with undefined if there is none; empty if there is no function.
[[nodiscard]] std::function<void(const std::optional<std::string>&)> outcomeOf(
    const std::optional<CallbackQuick>& callback);

}  // namespace merovanta::quick
