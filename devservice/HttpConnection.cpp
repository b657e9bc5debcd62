#include "HttpConnection.h"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffer_ref.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "Upgrade.h"

namespace merovanta::devservice {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr std::size_t kMaxHeadBytes = 16U << 10U;
constexpr std::size_t kMaxBodyBytes = 16U << 20U;
constexpr std::size_t kMaxLingerBytes = 32U << 20U;

std::string headerText(const http::request<http::string_body>& message, std::string_view name) {
    const auto value = message[beast::string_view(name.data(), name.size())];
    return {value.data(), value.size()};
}

Response faultStatus(unsigned status) {
    // These two have no body.
    if (status == 204 || status == 304) return {status, {}, {}, {}};
    return Response::error(status, "a fault is set");
}

}  // namespace

HttpConnection::HttpConnection(ClientStream stream, std::shared_ptr<void> slot, const Router& router,
                               Faults& faults, RequestLog& log, HttpTimeouts timeouts)
    : stream_(std::move(stream)),
      slot_(std::move(slot)),
      router_(router),
      faults_(faults),
      log_(log),
      timeouts_(timeouts),
      buffer_(kMaxHeadBytes),
      delay_(stream_.get_executor()) {}

void HttpConnection::start() {
    stream_.tcp().expires_after(timeouts_.head);
    stream_.open([self = shared_from_this()](ErrorCode error) {
        if (!error) self->readHead();
    });
}

void HttpConnection::readHead() {
    parser_ = std::make_unique<Parser>();
    parser_->header_limit(kMaxHeadBytes * 3);
    parser_->body_limit(boost::none);
    request_ = {};
    fault_.reset();
    distortion_ = {};
    stream_.tcp().expires_after(timeouts_.head);
    asio::async_read_until(
        stream_, beast::ref(buffer_), "\r\n\r\n",
        [self = shared_from_this()](ErrorCode error, std::size_t bytes) { self->onHead(error, bytes); });
}

void HttpConnection::onHead(ErrorCode error, std::size_t bytes) {
    if (error == asio::error::not_found) return refuse(431, "request head too large");
    if (error || !parseHead(bytes)) return;

    if (beast::websocket::is_upgrade(parser_->get())) {
        upgradeHandler_ = router_.webSocket(request_.target.path);
        if (upgradeHandler_ != nullptr) return serve();
    }
    const std::size_t limit = std::min(router_.bodyLimit(request_), kMaxBodyBytes);
    if (parser_->content_length() > limit) return refuse(413, "request body too large");
    parser_->body_limit(limit);
    if (parser_->is_done()) return onBody({});
    const auto expect = parser_->get()[http::field::expect];
    if (!beast::iequals(expect, "100-continue")) return readBody();
    static constexpr std::string_view proceed = "HTTP/1.1 100 Continue\r\n\r\n";
    stream_.tcp().expires_after(timeouts_.reply);
    asio::async_write(stream_, asio::buffer(proceed),
                      [self = shared_from_this()](ErrorCode failure, std::size_t) {
                          if (!failure) self->readBody();
                      });
}

bool HttpConnection::parseHead(std::size_t bytes) {
    std::string head(static_cast<const char*>(buffer_.data().data()), bytes);
    buffer_.consume(bytes);
    if (auto repaired = repairRequestHead(head)) head = std::move(*repaired);
    ErrorCode error;
    parser_->put(asio::buffer(head), error);
    if (error || !parser_->is_header_done()) {
        refuse(400, "malformed request");
        return false;
    }
    const auto& message = parser_->get();
    request_.method = std::string(message.method_string());
    request_.rawTarget = std::string(message.target());
    request_.target = Target::parse(request_.rawTarget);
    request_.host = headerText(message, "Host");
    request_.origin = headerText(message, "Origin");
    request_.contentType = headerText(message, "Content-Type");
    request_.cookies = headerText(message, "Cookie");
    request_.authorization = headerText(message, "Authorization");
    request_.acceptEncoding = headerText(message, "Accept-Encoding");
    request_.ifNoneMatch = headerText(message, "If-None-Match");
    request_.session = headerText(message, "X-QD-SSID");
    request_.encrypted = stream_.isEncrypted();
    ErrorCode ignored;
    const auto endpoint = stream_.tcp().socket().remote_endpoint(ignored);
    if (!ignored) request_.remoteAddress = endpoint.address().to_string();
    return true;
}

void HttpConnection::readBody() {
    stream_.tcp().expires_after(timeouts_.body);
    http::async_read(stream_, buffer_, *parser_,
                     [self = shared_from_this()](ErrorCode error, std::size_t) { self->onBody(error); });
}

void HttpConnection::onBody(ErrorCode error) {
    if (error == http::error::body_limit) return refuse(413, "request body too large");
    if (error == http::error::end_of_stream || error == http::error::partial_message) return;
    if (error.category() == http::make_error_code(http::error::bad_value).category()) {
        return refuse(400, "malformed request");
    }
    if (error) return;
    request_.body = parser_->get().body();
    serve();
}

void HttpConnection::serve() {
    fault_ = faults_.take(request_);
    if (!fault_) return answer();
    switch (fault_->kind) {
        case Fault::Kind::Delay:
            return serveLate(std::chrono::milliseconds(fault_->value));
        case Fault::Kind::Drop:
            return drop();
        case Fault::Kind::Status:
            return reply(faultStatus(static_cast<unsigned>(fault_->value)),
                         upgradeHandler_ == nullptr && parser_->keep_alive());
        case Fault::Kind::Truncate:
        case Fault::Kind::Empty:
        case Fault::Kind::Garbage:
        case Fault::Kind::Large:
            return answer();
    }
}

void HttpConnection::serveLate(std::chrono::milliseconds delay) {
    stream_.tcp().expires_never();
    delay_.expires_after(delay);
    delay_.async_wait([self = shared_from_this()](ErrorCode error) {
        if (!error) self->answer();
    });
}

void HttpConnection::drop() {
    log_.write(request_, request_.body.size(), 0);
    stream_.tcp().close();
}

void HttpConnection::answer() {
    const Fault* const distorting = fault_ && fault_->changesBody() ? &*fault_ : nullptr;
    if (upgradeHandler_ != nullptr && distorting == nullptr) return upgrade();
    Response response = upgradeHandler_ == nullptr ? router_.dispatch(request_) : Response();
    if (distorting != nullptr) distortion_ = distorting->distort(response);
    const bool whole = upgradeHandler_ == nullptr && distortion_.missing == 0;
    reply(std::move(response), whole && parser_->keep_alive());
}

void HttpConnection::upgrade() {
    auto handshake = parser_->release();
    Upgrade upgrade{request_, handshake, stream_, slot_};
    stream_.tcp().expires_never();
    auto refused = (*upgradeHandler_)(upgrade);
    if (refused) return reply(std::move(*refused), false);
    log_.write(request_, 0, 101);
}

void HttpConnection::refuse(unsigned status, const char* message) {
    reply(Response::error(status, message), false);
}

void HttpConnection::reply(Response response, bool keepAlive) {
    log_.write(request_, request_.body.size(), response.status);
    response_ = {};
    response_.version(11);
    response_.result(response.status);
    response_.set(http::field::server, "merovanta-devservice");
    response_.set(http::field::cache_control, "no-store");
    response_.set("X-Content-Type-Options", "nosniff");
    if (!response.contentType.empty()) response_.set(http::field::content_type, response.contentType);
    for (const auto& [name, value] : response.headers)
        response_.set(name, value);
    response_.body() = std::move(response.body);
    response_.keep_alive(keepAlive);
    response_.prepare_payload();
    if (distortion_.padding + distortion_.missing > 0) {
        response_.content_length(response_.body().size() + distortion_.padding + distortion_.missing);
    }
    stream_.tcp().expires_after(timeouts_.reply);
    http::async_write(stream_, response_,
                      [self = shared_from_this()](ErrorCode error, std::size_t) { self->onReply(error); });
}

void HttpConnection::onReply(ErrorCode error) {
    if (error) return;
    if (distortion_.padding > 0) return sendPadding();
    if (response_.keep_alive()) return readHead();
    stream_.tcp().expires_after(timeouts_.linger);
    buffer_.clear();
    stream_.finish([self = shared_from_this()](ErrorCode) { self->linger(); });
}

void HttpConnection::sendPadding() {
    static const std::string spaces(64U << 10U, ' ');
    const std::size_t bytes = std::min(distortion_.padding, spaces.size());
    distortion_.padding -= bytes;
    stream_.tcp().expires_after(timeouts_.reply);
    asio::async_write(stream_, asio::buffer(spaces.data(), bytes),
                      [self = shared_from_this()](ErrorCode error, std::size_t) { self->onReply(error); });
}

// Closing a socket with unread bytes resets it, and the client may never see the reply; so what it is still
// sending is read and thrown away for a moment.
void HttpConnection::linger() {
    stream_.tcp().async_read_some(buffer_.prepare(kMaxHeadBytes),
                                  [self = shared_from_this()](ErrorCode error, std::size_t bytes) {
                                      self->lingered_ += bytes;
                                      if (!error && self->lingered_ < kMaxLingerBytes) self->linger();
                                  });
}

}  // namespace merovanta::devservice
