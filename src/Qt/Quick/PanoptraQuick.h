#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace merovanta::quick {

/// MerovantaPanoptra for QML.
class PanoptraQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit PanoptraQuick(QObject* parent);

    Q_INVOKABLE void start();
    Q_INVOKABLE void start(const QString& tenantId, const QString& token);
    Q_INVOKABLE void preferWebSocket(bool isPreferred);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void tag(const QString& text);
    [[nodiscard]] Q_INVOKABLE QString shareId() const;
    [[nodiscard]] Q_INVOKABLE bool connected() const;
};

}  // namespace merovanta::quick
