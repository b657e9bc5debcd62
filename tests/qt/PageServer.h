#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <string>
#include <vector>

#include "Platform/HttpSession.h"

namespace merovanta::test {

/// A small web server on the loopback.
class PageServer {
 public:
    struct Page {
        QByteArray body;
        int status = 200;
        /// Each with its line end.
        QByteArray headers;
        QByteArray type = "text/html; charset=utf-8";
    };

    /// What it does not have is answered with 404, or as told.
    PageServer() : PageServer({.body = "not found", .status = 404}) {}
    explicit PageServer(Page otherwise);

    void set(const QByteArray& path, const Page& page) { mPages[path] = page; }
    void forget() { mRequests.clear(); }
    [[nodiscard]] std::string url(const std::string& path = {}) const;
    /// The last request for this path, with its body; empty if there was none.
    [[nodiscard]] QByteArray request(const QByteArray& path) const { return mRequests.value(path); }
    [[nodiscard]] const std::vector<HttpRequest>& received() const { return mReceived; }

 private:
    void answer(QTcpSocket& socket);

    Page mOtherwise;
    QMap<QByteArray, Page> mPages;
    QMap<QByteArray, QByteArray> mRequests;
    std::vector<HttpRequest> mReceived;
    QTcpServer mServer;
};

}  // namespace merovanta::test
