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
    const QByteArray head = socket.peek(1 << 16);
    if (!head.contains("\r\n\r\n")) return;
    socket.readAll();
    const QByteArray path = head.split(' ').value(1).split('?').value(0);
    mRequests[path] = head;
    const Page page = mPages.value(path, {.body = "not found", .status = 404});
    socket.write("HTTP/1.1 " + QByteArray::number(page.status) + " X\r\nContent-Type: " + page.type +
                 "\r\nContent-Length: " + QByteArray::number(page.body.size()) + "\r\nConnection: close\r\n" +
                 page.headers + "\r\n" + page.body);
    socket.disconnectFromHost();
}

}  // namespace merovanta::test
