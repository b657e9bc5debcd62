#pragma once

#include "Platform/MainQueue.h"
#include "Platform/WebSocket.h"

namespace merovanta::qt {

class NetworkThreadQt;

/// Connections over QWebSocket in the network thread. Proxies are used as for HTTP.
class WebSocketFactoryQt final : public WebSocketFactory {
 public:
    WebSocketFactoryQt(NetworkThreadQt& thread, MainQueue& mainQueue)
        : mThread(thread), mMainQueue(mainQueue) {}

    [[nodiscard]] std::unique_ptr<WebSocket> create(HttpRequest request,
                                                    WebSocket::Delegate delegate) override;

 private:
    NetworkThreadQt& mThread;
    MainQueue& mMainQueue;
};

}  // namespace merovanta::qt
