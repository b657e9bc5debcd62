#pragma once

#include <QtNetwork/QNetworkAccessManager>

#include "Platform/HttpSession.h"

namespace merovanta::qt {

/// The connections on which requests run, one after the other. Once a request has timed out, none of them is
/// used for a new one: when the device has changed its network they may all be dead without anybody knowing,
/// and each would have to time out by itself. Lives in the network thread.
class ConnectionsQt final : public QNetworkAccessManager {
    Q_OBJECT

 public:
    /// Those for new requests; made when there are none, and destroyed with the owner at the latest.
    [[nodiscard]] static ConnectionsQt& of(QObject& owner);

    void start(const HttpRequest& request, HttpSession::Completion completion);

 private:
    explicit ConnectionsQt(QObject& owner);

    void retire() { mIsRetired = true; }
    void exchangeEnded();

    int mExchanges = 0;
    bool mIsRetired = false;
};

}  // namespace merovanta::qt
