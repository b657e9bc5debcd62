#include "HttpPeerQt.h"

namespace merovanta::conformance {

HttpPeerQt::HttpPeerQt(int status, const std::string& body)
    : mAnswer("HTTP/1.1 " + QByteArray::number(status) + " X\r\nContent-Length: " +
              QByteArray::number(body.size()) + "\r\n\r\n" + QByteArray::fromStdString(body)) {
    if (!mServer.listen(QHostAddress::LocalHost)) qFatal("Cannot listen");
    QObject::connect(&mServer, &QTcpServer::newConnection, &mServer, [this] {
        while (QTcpSocket* const socket = mServer.nextPendingConnection())
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { receive(*socket); });
    });
}

std::string HttpPeerQt::url() const {
    return "http://127.0.0.1:" + std::to_string(mServer.serverPort());
}

void HttpPeerQt::receive(QTcpSocket& socket) {
    const QByteArray all = socket.peek(socket.bytesAvailable());
    const auto end = all.indexOf("\r\n\r\n");
    if (end < 0) return;
    const auto lines = all.left(end).split('\n');
    const auto words = lines[0].split(' ');
    HttpRequest request{.method = words[0].toStdString(), .url = words.value(1).toStdString()};
    qsizetype bodySize = 0;
    for (const QByteArray& line : lines.mid(1)) {
        const auto colon = line.indexOf(':');
        const QByteArray name = line.left(colon);
        const QByteArray value = line.mid(colon + 1).trimmed();
        request.headers.emplace_back(name.toStdString(), value.toStdString());
        if (name.toLower() == "content-length") bodySize = value.toLongLong();
    }
    if (all.size() < end + 4 + bodySize) return;
    socket.skip(end + 4);
    request.body = socket.read(bodySize).toStdString();
    mReceived.push_back(std::move(request));
    socket.write(mAnswer);
}

}  // namespace merovanta::conformance
