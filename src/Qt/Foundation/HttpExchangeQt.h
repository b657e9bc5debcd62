#pragma once

#include <QtCore/QObject>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <string>

#include "Platform/HttpSession.h"

namespace merovanta::qt {

/// One request and its reply. Deletes itself after the completion.
class HttpExchangeQt final : public QObject {
    Q_OBJECT

 public:
    HttpExchangeQt(QObject* parent, HttpSession::Completion completion);

    void start(QNetworkAccessManager& manager, const HttpRequest& request);

 Q_SIGNALS:
    /// Before the completion.
    void timedOut();

 private:
    void checkAnnouncedLength();
    void receive();
    void finish();
    void abort(std::string reason);
    void fail(std::string reason);
    void complete(HttpReply reply);

    [[nodiscard]] HttpResponse response() const;
    /// Why the exchange failed; empty if it did not.
    [[nodiscard]] std::string failure() const;
    [[nodiscard]] bool isCutShort() const;

    HttpSession::Completion mCompletion;
    QNetworkReply* mReply = nullptr;
    std::string mBody;
    std::string mAbortReason;
};

}  // namespace merovanta::qt
