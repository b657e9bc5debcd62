#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtQml/QJSValue>

namespace merovanta::quick {

/// MerovantaUser for QML. A user is an object with the properties of ActiveUser; those that are missing,
/// undefined or null are left out. Its tags are any list of texts.
class UserQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit UserQuick(QObject* parent);

    /// The functions are called as MerovantaUser says, the second with the reason why the service could not
    /// be told. What is no such user is refused with an error.
    Q_INVOKABLE void tag(const QJSValue& user, const QJSValue& callback = {}, const QJSValue& failure = {});
    Q_INVOKABLE void clear();
};

}  // namespace merovanta::quick
