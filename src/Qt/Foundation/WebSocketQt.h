#pragma once

#include <QtCore/QPointer>
#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "Platform/MainQueue.h"
#include "Platform/WebSocket.h"
#include "Qt/Foundation/WebSocketConnectionQt.h"

namespace merovanta::qt {

class NetworkThreadQt;

/// The main thread's side of a connection: each connect() makes a WebSocketConnectionQt in the network
/// thread, whose events come back over the main queue.
class WebSocketQt final : public WebSocket {
 public:
    WebSocketQt(NetworkThreadQt& thread, MainQueue& mainQueue, HttpRequest request, Delegate delegate);
    ~WebSocketQt() override;
    WebSocketQt(const WebSocketQt&) = delete;
    WebSocketQt& operator=(const WebSocketQt&) = delete;

    /// Called after disconnect(), it connects as soon as the old connection has ended.
    void connect() override;
    void write(std::string data) override;
    void disconnect(int closeCode) override;

 private:
    enum class State { idle, connecting, open, closing };
    using Message = std::function<void(std::string)> Delegate::*;

    /// What a connection calls in the network thread.
    [[nodiscard]] WebSocketConnectionQt::Events events();
    /// Runs in the network thread, if there is a connection then.
    void onNetwork(std::function<void(WebSocketConnectionQt&)> task);

    // Each may destroy this object.
    void opened();
    void ended(const WebSocketError& error);
    void received(Message message, std::string content);

    NetworkThreadQt& mThread;
    MainQueue& mMainQueue;
    const HttpRequest mRequest;
    /// Shared with the event that runs.
    const std::shared_ptr<const Delegate> mDelegate;
    /// Ends with this object, and with it all events on their way.
    const std::shared_ptr<std::monostate> mLife = std::make_shared<std::monostate>();
    State mState = State::idle;
    bool mConnectsAgain = false;
    /// Read and written in the network thread only.
    const std::shared_ptr<QPointer<WebSocketConnectionQt>> mConnection =
        std::make_shared<QPointer<WebSocketConnectionQt>>();
};

}  // namespace merovanta::qt
