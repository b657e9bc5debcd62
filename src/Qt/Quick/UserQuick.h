#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtQml/QJSValue>

namespace merovanta::quick {

/// MerovantaUser for QML. A user is an object with the properties of ActiveUser; those that are missing,
/// undefined or null are left out.
class UserQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit UserQuick(QObject* parent);

    /// The callback, a function, is called as MerovantaUser says.
    Q_INVOKABLE void tag(const QJSValue& user, const QJSValue& callback = {});
    Q_INVOKABLE void clear();
};

}  // namespace merovanta::quick
