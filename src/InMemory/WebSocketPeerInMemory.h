#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "InMemory/VirtualTime.h"
#include "Platform/WebSocket.h"

namespace merovanta::inmemory {

/// The other side of one connection.
class WebSocketPeerInMemory {
 public:
    enum class State { idle, connecting, open };

    WebSocketPeerInMemory(std::shared_ptr<VirtualTime> time, HttpRequest request,
                          WebSocket::Delegate delegate);

    /// Lets the pending connection come about.
    void accept();
    /// Ends the connection, or the attempt; a text that is too long does so by itself.
    void fail(WebSocketError error);
    void sendText(std::string text);
    void sendData(std::string data);

    const HttpRequest request;
    State state = State::idle;
    /// How often connecting began.
    int attempts = 0;
    std::vector<std::string> received;
    /// The code of the last disconnect().
    std::optional<int> closeCode;

    /// What the connection's own side does.
    void connect();
    void receive(std::string data);
    void disconnect(int code);
    void dropped();

 private:
    /// Tells the delegate later, unless the connection is dropped by then.
    void post(std::function<void(const WebSocket::Delegate&)> event);
    [[nodiscard]] bool isBounded(const std::string& message);

    std::shared_ptr<VirtualTime> mTime;
    std::shared_ptr<WebSocket::Delegate> mDelegate;
};

}  // namespace merovanta::inmemory
