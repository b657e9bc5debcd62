#include "Qt/Quick/UserQuick.h"

#include <Merovanta/Merovanta.h>

#include <QtCore/QVariant>
#include <algorithm>

#include "Qt/Quick/CallbackQuick.h"

namespace merovanta::quick {

namespace {

std::optional<std::string> textOf(const QJSValue& value) {
    if (value.isUndefined() || value.isNull()) return std::nullopt;
    return value.toString().toStdString();
}

std::vector<std::string> textsOf(const QVariantList& values) {
    std::vector<std::string> texts;
    for (const QVariant& value : values)
        texts.push_back(value.toString().toStdString());
    return texts;
}

bool areTexts(const QVariantList& values) {
    return std::all_of(values.begin(), values.end(), [](const QVariant& value) {
        return value.isValid() && value.typeId() != QMetaType::Nullptr && value.canConvert<QString>();
    });
}

}  // namespace

UserQuick::UserQuick(QObject* parent) : QObject(parent) {}

void UserQuick::tag(const QJSValue& user, const QJSValue& callback, const QJSValue& failure) {
    if (!user.isObject() || user.isArray() || user.isCallable())
        return CallbackQuick::throwTypeError(
            *this, QStringLiteral("A user is an object like {id: \"4711\"}, not ") + user.toString());
    const QJSValue tagValues = user.property(QStringLiteral("tags"));
    const bool hasTags = !tagValues.isUndefined() && !tagValues.isNull();
    const QVariant tags = tagValues.toVariant();
    // Any sequence: an array, a list of a C++ model's, a list property.
    const bool isSequence = tags.typeId() != QMetaType::QString && tags.canConvert<QVariantList>();
    if (hasTags && (!isSequence || !areTexts(tags.toList())))
        return CallbackQuick::throwTypeError(*this, QStringLiteral("The tags of a user are a list of texts"));
    bool isRefused = false;
    const auto onDone = CallbackQuick::of(*this, callback, isRefused);
    if (isRefused) return;
    const auto onFailure = CallbackQuick::of(*this, failure, isRefused);
    if (isRefused) return;
    const auto text = [&](const char* name) { return textOf(user.property(QLatin1String(name))); };
    const ActiveUser active{.id = text("id"),
                            .firstname = text("firstname"),
                            .lastname = text("lastname"),
                            .email = text("email"),
                            .tags = hasTags ? std::optional(textsOf(tags.toList())) : std::nullopt,
                            .assignedUser = text("assignedUser")};
    Merovanta::user().tag(
        active,
        [onDone](bool isDone) {
            if (onDone) (*onDone)({isDone});
        },
        [onFailure](const std::string& error) {
            if (onFailure) (*onFailure)({errorValue(error)});
        });
}

void UserQuick::clear() {
    Merovanta::user().clear();
}

}  // namespace merovanta::quick
