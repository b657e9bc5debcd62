#pragma once

#include <memory>
#include <vector>

#include "InMemory/VirtualTime.h"
#include "InMemory/WebSocketPeerInMemory.h"
#include "Platform/WebSocket.h"

namespace merovanta::inmemory {

/// A network on which every connection waits for the test to play its other side.
class WebSocketsInMemory : public WebSocketFactory {
 public:
    explicit WebSocketsInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::unique_ptr<WebSocket> create(HttpRequest request,
                                                    WebSocket::Delegate delegate) override;

    /// The other sides of all connections ever made, in order.
    std::vector<std::shared_ptr<WebSocketPeerInMemory>> peers;

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
