#pragma once

#include "Platform/HttpSession.h"

namespace merovanta::qt {

class NetworkThreadQt;

/// HTTP over QNetworkAccessManager in the network thread, which also runs the completions.
///
/// Redirections are followed unless they lead from an encrypted to an open connection. The system's proxy is
/// used, but never on the way to this very machine.
class HttpSessionQt final : public HttpSession {
 public:
    explicit HttpSessionQt(NetworkThreadQt& thread) : mThread(thread) {}

    void execute(HttpRequest request, Completion completion) override;

 private:
    NetworkThreadQt& mThread;
};

}  // namespace merovanta::qt
