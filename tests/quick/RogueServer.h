#pragma once

#include <QtCore/QByteArray>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <string>

namespace merovanta::test {

/// A server on the loopback that answers every request with the same bytes, be they HTTP or not.
class RogueServer {
 public:
    enum class Afterwards { keepOpen, close };

    RogueServer(QByteArray answer, Afterwards afterwards, int repetitions = 0);

    [[nodiscard]] std::string url() const;
    /// All that was received.
    [[nodiscard]] const QByteArray& received() const { return mReceived; }
    /// How many there have been.
    [[nodiscard]] int connections() const { return mConnections; }

 private:
    void answer(QTcpSocket& socket);

    QByteArray mAnswer;
    Afterwards mAfterwards;
    /// How many more times the body's last mebibyte is sent.
    int mRepetitions;
    QByteArray mReceived;
    int mConnections = 0;
    QTcpServer mServer;
};

}  // namespace merovanta::test
