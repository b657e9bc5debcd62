#pragma once

#include <QtCore/QByteArray>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <string>
#include <vector>

#include "Platform/HttpSession.h"

namespace merovanta::conformance {

/// An HTTP server on the loopback with one answer to everything.
class HttpPeerQt {
 public:
    HttpPeerQt(int status, const std::string& body);

    [[nodiscard]] std::string url() const;
    [[nodiscard]] const std::vector<HttpRequest>& received() const { return mReceived; }

 private:
    void receive(QTcpSocket& socket);

    QByteArray mAnswer;
    std::vector<HttpRequest> mReceived;
    QTcpServer mServer;
};

}  // namespace merovanta::conformance
