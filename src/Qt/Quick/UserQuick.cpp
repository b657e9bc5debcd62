#include "Qt/Quick/UserQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

namespace {

std::optional<std::string> textOf(const QJSValue& value) {
    if (value.isUndefined() || value.isNull()) return std::nullopt;
    return value.toString().toStdString();
}

std::optional<std::vector<std::string>> textsOf(const QJSValue& values) {
    if (!values.isArray()) return std::nullopt;
    std::vector<std::string> texts;
    const quint32 count = values.property(QStringLiteral("length")).toUInt();
    for (quint32 index = 0; index < count; ++index)
        texts.push_back(values.property(index).toString().toStdString());
    return texts;
}

}  // namespace

UserQuick::UserQuick(QObject* parent) : QObject(parent) {}

void UserQuick::tag(const QJSValue& user, const QJSValue& callback) {
    const auto text = [&](const char* name) { return textOf(user.property(QLatin1String(name))); };
    const ActiveUser active{.id = text("id"),
                            .firstname = text("firstname"),
                            .lastname = text("lastname"),
                            .email = text("email"),
                            .tags = textsOf(user.property(QStringLiteral("tags"))),
                            .assignedUser = text("assignedUser")};
    if (!callback.isCallable()) return Merovanta::user().tag(active);
    Merovanta::user().tag(active, [callback](bool isDone) { callback.call({isDone}); });
}

void UserQuick::clear() {
    Merovanta::user().clear();
}

}  // namespace merovanta::quick
