#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/HttpSession.h"

namespace merovanta {

/// Why a connection ended.
struct WebSocketError {
    /// The close code, if the protocol gave one: 1000 for a normal end. Absent for all that broke the
    /// connection from outside the protocol: no route, refused certificate, network lost.
    std::optional<int> code;
    std::string description;
};

/// One client connection, which may be opened again after it ended. Destroying it drops the connection
/// without any further event; it may be destroyed inside its own event. Thread: main, for calls and events.
class WebSocket {
 public:
    /// Events; each comes later, never inside a call to this object.
    struct Delegate {
        std::function<void()> didConnect;
        /// Once for each connect() that ends: with an error if it failed, was lost, or was closed by the
        /// other side, whatever the code; without one if disconnect() ended it.
        std::function<void(const std::optional<WebSocketError>&)> didDisconnect;
        std::function<void(std::string text)> didReceiveText;
        std::function<void(std::string data)> didReceiveData;
    };

    /// A text or binary message that is longer ends the connection with an error of code 1009.
    static constexpr std::size_t maximumMessageBytes = std::size_t{16} * 1024 * 1024;

    virtual ~WebSocket() = default;

    /// Begins to connect; while connecting or connected it does nothing. May be called inside an event.
    virtual void connect() = 0;

    /// Sends one binary message; it is lost without a word while the connection is not open.
    virtual void write(std::string data) = 0;

    /// Closes with this code; the end is reported when it has come about. Does nothing if there is none to
    /// close.
    virtual void disconnect(int closeCode) = 0;
};

/// Makes connections. Thread: main.
class WebSocketFactory {
 public:
    virtual ~WebSocketFactory() = default;

    /// The request gives address ("ws:" or "wss:"), headers and the longest time that connecting may take.
    /// Certificates are checked as the system does. Never null; nothing happens before connect().
    [[nodiscard]] virtual std::unique_ptr<WebSocket> create(HttpRequest request,
                                                            WebSocket::Delegate delegate) = 0;
};

}  // namespace merovanta
