#include "PageServer.h"

namespace merovanta::test {

PageServer::PageServer(Page otherwise) : mOtherwise(std::move(otherwise)) {
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
    const QByteArray all = socket.peek(socket.bytesAvailable());
    const auto bodyStart = all.indexOf("\r\n\r\n") + 4;
    if (bodyStart < 4) return;
    const auto lines = all.left(bodyStart - 4).split('\n');
    const auto target = lines[0].split(' ').value(1);
    HttpRequest request{.method = lines[0].split(' ')[0].toStdString(), .url = target.toStdString()};
    qsizetype bodySize = 0;
    for (const QByteArray& line : lines.mid(1)) {
        const QByteArray name = line.left(line.indexOf(':'));
        const QByteArray value = line.mid(name.size() + 1).trimmed();
        request.headers.emplace_back(name.toStdString(), value.toStdString());
        if (name.toLower() == "content-length") bodySize = value.toLongLong();
    }
    if (all.size() < bodyStart + bodySize) return;
    socket.readAll();
    request.body = all.mid(bodyStart).toStdString();
    mReceived.push_back(std::move(request));
    const QByteArray path = target.split('?')[0];
    mRequests[path] = all;
    const Page page = mPages.value(path, mOtherwise);
    socket.write("HTTP/1.1 " + QByteArray::number(page.status) + " X\r\nContent-Type: " + page.type +
                 "\r\nContent-Length: " + QByteArray::number(page.body.size()) + "\r\nConnection: close\r\n" +
                 page.headers + "\r\n" + page.body);
    socket.disconnectFromHost();
}

}  // namespace merovanta::test
