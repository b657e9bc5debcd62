#include "VisitorSocket.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "SocketTimeouts.h"

namespace merovanta::devservice {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;

namespace {
constexpr std::size_t kMaxIncomingBytes = 8U << 20U;
constexpr std::size_t kMaxFrames = 64;
}  // namespace

VisitorSocket::VisitorSocket(ClientStream stream, std::shared_ptr<void> slot, Request opening,
                             VisitorStreams& streams)
    : socket_(std::move(stream)), slot_(std::move(slot)), opening_(std::move(opening)), streams_(streams) {
    opening_.body = {};
}

void VisitorSocket::start(beast::http::request<beast::http::string_body> handshake,
                          std::function<void()> onOpen) {
    handshake_ = std::move(handshake);
    socket_.set_option(socketTimeouts());
    socket_.read_message_max(kMaxIncomingBytes);
    socket_.auto_fragment(false);
    socket_.async_accept(handshake_,
                         [self = shared_from_this(), onOpen = std::move(onOpen)](ErrorCode error) {
                             if (error) return;
                             self->open_ = true;
                             onOpen();
                             self->read();
                             self->sendNext();
                         });
}

void VisitorSocket::read() {
    socket_.async_read(incoming_, [self = shared_from_this()](ErrorCode error, std::size_t) {
        if (error) return self->closed(error);
        self->receive();
        self->incoming_.consume(self->incoming_.size());
        self->read();
    });
}

void VisitorSocket::receive() {
    if (socket_.got_text()) {
        Visitor* known = streams_.find(opening_);
        if (known != nullptr)
            known->warn("A text frame was ignored: events come as binary frames", currentMoment());
        return;
    }
    const auto bytes = incoming_.cdata();
    streams_.receive(opening_, {static_cast<const char*>(bytes.data()), bytes.size()}, Transport::WebSocket);
}

bool VisitorSocket::send(SocketFrame frame) {
    if (frames_.size() >= kMaxFrames) return false;
    frames_.push_back(std::move(frame));
    sendNext();
    return true;
}

void VisitorSocket::replace() {
    replaced_ = true;
    frames_.clear();
    send({.kind = SocketFrame::Kind::Close, .code = websocket::close_code::normal});
}

bool VisitorSocket::takeNext() {
    if (!frames_.empty()) {
        takeFrame();
        return true;
    }
    Visitor* visitor = replaced_ ? nullptr : streams_.find(opening_);
    if (visitor == nullptr) return false;
    auto message = visitor->takeAgentMessage();
    if (!message) return false;
    current_ = {.payload = std::make_shared<const std::string>(std::move(*message))};
    return true;
}

void VisitorSocket::takeFrame() {
    current_ = frames_.front();
    if (--frames_.front().count == 0) frames_.pop_front();
}

void VisitorSocket::sendNext() {
    if (!open_ || sending_ || !takeNext()) return;
    sending_ = true;
    switch (current_.kind) {
        case SocketFrame::Kind::Drop:
            return beast::get_lowest_layer(socket_).close();
        case SocketFrame::Kind::Close:
            return socket_.async_close({static_cast<websocket::close_code>(current_.code)},
                                       [self = shared_from_this()](ErrorCode) {});
        case SocketFrame::Kind::Text:
        case SocketFrame::Kind::Binary:
            socket_.binary(current_.kind == SocketFrame::Kind::Binary);
            socket_.async_write(
                asio::buffer(*current_.payload),
                [self = shared_from_this()](ErrorCode error, std::size_t) { self->onSent(error); });
    }
}

void VisitorSocket::onSent(ErrorCode error) {
    sending_ = false;
    current_ = {};
    if (!error) sendNext();
}

void VisitorSocket::closed(ErrorCode error) {
    open_ = false;
    if (replaced_) return;
    // A client that does not wait for the answer to its close frame makes that fail; the frame came all the
    // same.
    const bool handshake =
        error == websocket::error::closed || socket_.reason().code != websocket::close_code::none;
    streams_.disconnected(opening_,
                          handshake ? "Code " + std::to_string(socket_.reason().code) : "Connection lost");
}

}  // namespace merovanta::devservice
