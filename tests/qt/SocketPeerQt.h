#pragma once

#include <QtNetwork/QSslConfiguration>
#include <QtWebSockets/QWebSocket>
#include <QtWebSockets/QWebSocketServer>
#include <optional>
#include <string>
#include <vector>

namespace merovanta::test {

/// A WebSocket server on the loopback that takes every connection.
class SocketPeerQt {
 public:
    /// With a configuration it speaks TLS.
    explicit SocketPeerQt(const std::optional<QSslConfiguration>& tls = std::nullopt);

    [[nodiscard]] std::string url() const;

    // What happens on the newest connection.
    void sendText(const std::string& text) { mSocket->sendTextMessage(QString::fromStdString(text)); }
    void sendData(const std::string& data) { mSocket->sendBinaryMessage(QByteArray::fromStdString(data)); }
    /// Sends what can be sent without waiting; false if nothing is left.
    bool push() {
        mSocket->flush();
        return mSocket->bytesToWrite() > 0;
    }
    /// A frame is taken off only when it is there as a whole, which it will not be.
    void stopReading() { mSocket->setReadBufferSize(1); }
    /// Without a code the connection breaks.
    void end(std::optional<int> closeCode);

    /// How many connections there were.
    int connections = 0;
    QNetworkRequest request;
    std::vector<std::string> received;
    /// The code with which the last connection was ended, by either side.
    std::optional<int> closeCode;

 private:
    void take(QWebSocket& socket);

    QWebSocketServer mServer;
    QWebSocket* mSocket = nullptr;
};

}  // namespace merovanta::test
