#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "Service.h"

namespace merovanta::devservice::test {

/// The client's end of a WebSocket to the service.
class SocketClient {
 public:
    SocketClient(Service& service, const std::string& target, const Service::Headers& headers = {});

    /// Of the reply to the handshake.
    unsigned status() const { return status_; }

    void send(const std::string& bytes, bool binary = false);

    /// The next frame; empty when the service closes.
    std::string read();
    bool gotBinary() const { return socket_.got_binary(); }

    /// Reads on until a JSON message fits; discarded when the service closes before.
    nlohmann::json next(const std::function<bool(const nlohmann::json&)>& fits);

    /// The code with which the service closes.
    unsigned closeCode();
    void disconnect();

 private:
    boost::beast::websocket::stream<boost::asio::ip::tcp::socket> socket_;
    boost::beast::error_code error_;
    unsigned status_ = 0;
};

}  // namespace merovanta::devservice::test
