#pragma once

#include <QtNetwork/QNetworkAccessManager>

#include "Platform/HttpSession.h"

namespace merovanta::qt {

/// The connections on which requests run, one after the other. Once a request has timed out, or one asks for
/// a new connection, none of them is used any more: when the device has changed its network they may all be
/// dead without anybody knowing, and each would have to time out by itself. Lives in the network thread.
class ConnectionsQt final : public QNetworkAccessManager {
    Q_OBJECT

 public:
    /// Starts the request on those in use, which are made when there are none, and destroyed with the owner
    /// at the latest.
    static void start(QObject& owner, const HttpRequest& request, HttpSession::Completion completion);

 private:
    explicit ConnectionsQt(QObject& owner);

    void start(const HttpRequest& request, HttpSession::Completion completion);
    void exchangeEnded();
    void retire();
    void endIfUnused();

    int mExchanges = 0;
    bool mIsRetired = false;
};

}  // namespace merovanta::qt
