#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <string>

namespace merovanta::test {

/// A small web server on the loopback. What it does not have is answered with 404.
class PageServer {
 public:
    struct Page {
        QByteArray body;
        int status = 200;
        /// Each with its line end.
        QByteArray headers;
        QByteArray type = "text/html; charset=utf-8";
    };

    PageServer();

    void set(const QByteArray& path, const Page& page) { mPages[path] = page; }
    void forget() { mRequests.clear(); }
    [[nodiscard]] std::string url(const std::string& path) const;
    /// The last request for this path, with its body; empty if there was none.
    [[nodiscard]] QByteArray request(const QByteArray& path) const { return mRequests.value(path); }

 private:
    void answer(QTcpSocket& socket);

    QMap<QByteArray, Page> mPages;
    QMap<QByteArray, QByteArray> mRequests;
    QTcpServer mServer;
};

}  // namespace merovanta::test
