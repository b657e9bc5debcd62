#pragma once

#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>

#include "ClientStream.h"
#include "Faults.h"
#include "HttpTimeouts.h"
#include "Request.h"
#include "RequestLog.h"
#include "Response.h"
#include "Router.h"

namespace merovanta::devservice {

/// One client connection: reads a request, answers it, reads the next. Lives as long as an operation is
/// pending.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
 public:
    HttpConnection(ClientStream stream, std::shared_ptr<void> slot, const Router& router, Faults& faults,
                   RequestLog& log, HttpTimeouts timeouts);

    void start();

 private:
    using ErrorCode = boost::beast::error_code;
    using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;

    void readHead();
    void onHead(ErrorCode error, std::size_t bytes);
    /// Feeds the head to the parser; false after answering that it is malformed.
    bool parseHead(std::size_t bytes);
    void readBody();
    void onBody(ErrorCode error);
    /// Answers the request unless a fault keeps it from that.
    void serve();
    void serveLate(std::chrono::milliseconds delay);
    void answer();
    void drop();
    void upgrade();
    void refuse(unsigned status, const char* message);
    void reply(Response response, bool keepAlive);
    void onReply(ErrorCode error);
    void sendPadding();
    void linger();

    ClientStream stream_;
    std::shared_ptr<void> slot_;
    const Router& router_;
    Faults& faults_;
    RequestLog& log_;
    HttpTimeouts timeouts_;
    boost::beast::flat_buffer buffer_;
    std::unique_ptr<Parser> parser_;
    boost::beast::http::response<boost::beast::http::string_body> response_;
    Request request_;
    /// Takes the connection over when the client asks for a WebSocket.
    const Router::UpgradeHandler* upgradeHandler_ = nullptr;
    std::optional<Fault> fault_;
    Fault::Distortion distortion_;
    boost::asio::steady_timer delay_;
    std::size_t lingered_ = 0;
};

}  // namespace merovanta::devservice
