#include "Qt/Quick/CallbackQuick.h"

#include <QtQml/qqml.h>
#include <QtQml/QJSEngine>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlError>
#include <QtQml/QQmlInfo>
#include <utility>

namespace merovanta::quick {

namespace {

/// The facades are children of what is attached to an object of the script's; errors are reported to the
/// engine of that object.
QObject* scriptObjectOf(const QObject& facade) {
    QObject* object = facade.parent();
    while (object != nullptr && qmlEngine(object) == nullptr)
        object = object->parent();
    return object;
}

}  // namespace

CallbackQuick::CallbackQuick(const QObject& facade, QJSValue function)
    : mScriptObject(scriptObjectOf(facade)), mFunction(std::move(function)) {}

void CallbackQuick::operator()(const QJSValueList& arguments) const {
    // A copy: the script may replace it inside.
    const QJSValue result = QJSValue(mFunction).call(arguments);
    if (!result.isError()) return;
    QQmlError error;
    error.setDescription(result.toString());
    error.setUrl(QUrl(result.property(QStringLiteral("fileName")).toString()));
    error.setLine(result.property(QStringLiteral("lineNumber")).toInt());
    // Without words of its own it would not go to the engine.
    qmlWarning(mScriptObject, error) << "A callback has thrown";
}

std::optional<CallbackQuick> CallbackQuick::of(const QObject& facade, const QJSValue& function,
                                               bool& isRefused) {
    if (function.isUndefined() || function.isNull()) return std::nullopt;
    if (function.isCallable()) return CallbackQuick(facade, function);
    isRefused = true;
    throwTypeError(facade, QStringLiteral("A callback is a function, not ") + function.toString());
    return std::nullopt;
}

void CallbackQuick::throwTypeError(const QObject& facade, const QString& message) {
    const QObject* const object = scriptObjectOf(facade);
    QJSEngine* const engine = object == nullptr ? nullptr : qjsEngine(object);
    if (engine != nullptr) engine->throwError(QJSValue::TypeError, message);
}

QJSValue errorValue(const std::optional<std::string>& error) {
    return error ? QJSValue(QString::fromStdString(*error)) : QJSValue();
}

std::function<void(const std::optional<std::string>&)> outcomeOf(
    const std::optional<CallbackQuick>& callback) {
    if (!callback) return {};
    return [function = *callback](const std::optional<std::string>& error) { function({errorValue(error)}); };
}

}  // namespace merovanta::quick
