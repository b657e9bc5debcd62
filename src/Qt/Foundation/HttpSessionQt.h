#pragma once

#include <QtCore/QThread>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "Platform/HttpSession.h"
#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

class HttpWorkerQt;

/// HTTP over QNetworkAccessManager in a thread of its own, which also runs the completions.
///
/// Redirections are followed unless they lead from an encrypted to an open connection. The system's proxy is
/// used, but never on the way to this very machine.
class HttpSessionQt final : public HttpSession, private ApplicationLifeQt::Observer {
 public:
    HttpSessionQt();
    ~HttpSessionQt() override;

    void execute(HttpRequest request, Completion completion) override;

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    /// Needs the lock, and a worker.
    void post(HttpRequest request, Completion completion);

    std::mutex mMutex;
    std::unique_ptr<QThread> mThread;
    /// Lives in the thread; null while there is no application.
    HttpWorkerQt* mWorker = nullptr;
    /// Requests made before there was an application.
    std::vector<std::function<void()>> mEarly;
};

}  // namespace merovanta::qt
