#pragma once

#include <QtNetwork/QSslConfiguration>
#include <QtWebSockets/QWebSocket>
#include <QtWebSockets/QWebSocketServer>
#include <optional>
#include <string>
#include <vector>

namespace merovanta::test {

/// A WebSocket server on the loopback that takes every connection; with a configuration it speaks TLS.
class SocketPeerQt {
 public:
    explicit SocketPeerQt(const std::optional<QSslConfiguration>& tls = std::nullopt)
        : mServer({}, tls ? QWebSocketServer::SecureMode : QWebSocketServer::NonSecureMode) {
        if (tls) mServer.setSslConfiguration(*tls);
        if (!mServer.listen(QHostAddress::LocalHost)) qFatal("Cannot listen");
        QObject::connect(&mServer, &QWebSocketServer::newConnection, &mServer, [this] { take(); });
    }

    [[nodiscard]] std::string url() const { return mServer.serverUrl().toString().toStdString(); }

    /// The newest connection, here.
    [[nodiscard]] QWebSocket& socket() { return *mSocket; }
    int connections = 0;
    std::vector<std::string> received;

 private:
    void take() {
        mSocket = mServer.nextPendingConnection();
        mSocket->setParent(&mServer);
        ++connections;
        QObject::connect(mSocket, &QWebSocket::binaryMessageReceived, &mServer,
                         [this](const QByteArray& data) { received.push_back(data.toStdString()); });
    }

    QWebSocketServer mServer;
    QWebSocket* mSocket = nullptr;
};

}  // namespace merovanta::test
