#include "RogueServer.h"

#include <utility>

namespace merovanta::test {

RogueServer::RogueServer(QByteArray answer, Afterwards afterwards, int repetitions)
    : mAnswer(std::move(answer)), mAfterwards(afterwards), mRepetitions(repetitions) {
    if (!mServer.listen(QHostAddress::LocalHost)) qFatal("Cannot listen");
    QObject::connect(&mServer, &QTcpServer::newConnection, &mServer, [this] {
        while (QTcpSocket* const socket = mServer.nextPendingConnection()) {
            ++mConnections;
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                mReceived += socket->readAll();
                if (mReceived.contains("\r\n\r\n")) this->answer(*socket);
            });
        }
    });
}

std::string RogueServer::url() const {
    return "http://127.0.0.1:" + std::to_string(mServer.serverPort()) + "/path?q=a%20b";
}

void RogueServer::answer(QTcpSocket& socket) {
    socket.write(mAnswer);
    const QByteArray filling(1 << 20, 'x');
    for (int count = 0; count < mRepetitions; ++count)
        socket.write(filling);
    if (mAfterwards == Afterwards::close) socket.disconnectFromHost();
}

}  // namespace merovanta::test
