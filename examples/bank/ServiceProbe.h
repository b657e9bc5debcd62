#pragma once

#include <QtQml/qqmlregistration.h>
#include <QTcpSocket>
#include <QTimer>

// Finds out whether anything listens at the service's address, so that the app can say so in words.
class ServiceProbe : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString server READ server CONSTANT)

 public:
    // `server` is HOST[:PORT]; without a port the one of plain HTTP.
    explicit ServiceProbe(const QString& server, QObject* parent = nullptr);

    QString server() const { return m_server; }

    // Tries to connect; reports `unreachable` at most once per call.
    Q_INVOKABLE void check();

 signals:
    void unreachable();

 private:
    void fail();

    QString m_server;
    QTcpSocket m_socket;
    QTimer m_timeout;
};
