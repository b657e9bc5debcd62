#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtQml/QJSValue>

namespace merovanta::quick {

/// MerovantaCoBrowsing for QML.
class CoBrowsingQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit CoBrowsingQuick(QObject* parent);

    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    /// Of the two functions, either of which may be undefined, one is called, as MerovantaCoBrowsing says;
    /// the second with the reason.
    Q_INVOKABLE void startWith(const QJSValue& success, const QJSValue& failure);
};

}  // namespace merovanta::quick
