#pragma once

#include <QtCore/QObject>
#include <QtNetwork/QNetworkAccessManager>
#include <atomic>

#include "Platform/HttpSession.h"

namespace merovanta::qt {

/// The part of the HTTP session that lives in the session's thread.
class HttpWorkerQt final : public QObject {
    Q_OBJECT

 public:
    /// Thread: the session's.
    void execute(const HttpRequest& request, HttpSession::Completion completion);

    /// No completion begins after this. Any thread.
    void stop() { mStopped = true; }

 private:
    QNetworkAccessManager& manager();

    std::atomic<bool> mStopped = false;
    /// Made on first use, so that it belongs to the session's thread.
    QNetworkAccessManager* mManager = nullptr;
};

}  // namespace merovanta::qt
