#include "SocketPeerQt.h"

#include <QtNetwork/QTcpSocket>

namespace merovanta::test {

SocketPeerQt::SocketPeerQt(const std::optional<QSslConfiguration>& tls)
    : mServer({}, tls ? QWebSocketServer::SecureMode : QWebSocketServer::NonSecureMode) {
    if (tls) mServer.setSslConfiguration(*tls);
    if (!mServer.listen(QHostAddress::LocalHost)) qFatal("Cannot listen");
    QObject::connect(&mServer, &QWebSocketServer::newConnection, &mServer, [this] {
        while (QWebSocket* const socket = mServer.nextPendingConnection())
            take(*socket);
    });
}

std::string SocketPeerQt::url() const {
    return mServer.serverUrl().toString().toStdString();
}

void SocketPeerQt::end(std::optional<int> code) {
    if (code) {
        mSocket->close(static_cast<QWebSocketProtocol::CloseCode>(*code));
    } else {
        mSocket->abort();
    }
}

void SocketPeerQt::take(QWebSocket& socket) {
    ++connections;
    mSocket = &socket;
    request = socket.request();
    QObject::connect(&socket, &QWebSocket::binaryMessageReceived, &mServer,
                     [this](const QByteArray& data) { received.push_back(data.toStdString()); });
    QObject::connect(&socket, &QWebSocket::disconnected, &mServer,
                     [this, &socket] { closeCode = socket.closeCode(); });
}

}  // namespace merovanta::test
