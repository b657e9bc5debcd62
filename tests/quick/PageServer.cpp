#include "PageServer.h"

namespace merovanta::test {

PageServer::PageServer() {
    if (!mServer.listen(QHostAddress::LocalHost)) qFatal("Cannot listen");
    QObject::connect(&mServer, &QTcpServer::newConnection, &mServer, [this] {
        while (QTcpSocket* const socket = mServer.nextPendingConnection())
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
    });
}

std::string PageServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(mServer.serverPort()) + path;
}

void PageServer::answer(QTcpSocket& socket) {
    const QByteArray request = socket.peek(1 << 16);
    const auto bodyStart = request.indexOf("\r\n\r\n") + 4;
    const auto lines = request.toLower().split('\n');
    qsizetype bodySize = 0;
    for (const QByteArray& line : lines) {
        if (line.startsWith("content-length:")) bodySize = line.mid(15).trimmed().toLongLong();
    }
    if (bodyStart < 4 || request.size() < bodyStart + bodySize) return;
    socket.readAll();
    const QByteArray path = request.split(' ').value(1).split('?').value(0);
    mRequests[path] = request;
    const Page page = mPages.value(path, {.body = "not found", .status = 404});
    socket.write("HTTP/1.1 " + QByteArray::number(page.status) + " X\r\nContent-Type: " + page.type +
                 "\r\nContent-Length: " + QByteArray::number(page.body.size()) + "\r\nConnection: close\r\n" +
                 page.headers + "\r\n" + page.body);
    socket.disconnectFromHost();
}

}  // namespace merovanta::test
