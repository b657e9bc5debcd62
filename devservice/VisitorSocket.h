#pragma once

#include <boost/beast/core/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <deque>
#include <functional>
#include <memory>

#include "ClientStream.h"
#include "Request.h"
#include "SocketFrame.h"
#include "VisitorStreams.h"

namespace merovanta::devservice {

/// A visitor's WebSocket: lists of events come up as binary frames, agent messages go down as text frames.
/// They wait in the visitor's own bounded queue until the socket is ready for the next one. Lives as long as
/// the connection.
class VisitorSocket : public std::enable_shared_from_this<VisitorSocket> {
 public:
    /// `opening` is the request of the handshake.
    VisitorSocket(ClientStream stream, std::shared_ptr<void> slot, Request opening, VisitorStreams& streams);

    /// Answers the handshake; `onOpen` runs when that is done, before anything is received.
    void start(boost::beast::http::request<boost::beast::http::string_body> handshake,
               std::function<void()> onOpen);

    const Request& opening() const { return opening_; }

    /// Open, and not replaced by a newer connection.
    bool isCurrent() const { return open_ && !replaced_; }

    /// The visitor, or null when it has been forgotten.
    const Visitor* visitor() const { return streams_.find(opening_); }

    /// Sends what waits for the visitor. To be called when something has been queued.
    void sendNext();

    /// Queues a frame; false when too many wait already.
    bool send(SocketFrame frame);

    /// Closes in favour of a newer connection of the same stream; its end is not the visitor's any more.
    void replace();

 private:
    using ErrorCode = boost::beast::error_code;

    void read();
    void receive();
    /// Takes what is to be sent next into `current_`; false when nothing waits.
    bool takeNext();
    void takeFrame();
    void onSent(ErrorCode error);
    void closed(ErrorCode error);

    boost::beast::websocket::stream<ClientStream> socket_;
    std::shared_ptr<void> slot_;
    Request opening_;
    VisitorStreams& streams_;
    boost::beast::http::request<boost::beast::http::string_body> handshake_;
    boost::beast::flat_buffer incoming_;
    std::deque<SocketFrame> frames_;
    SocketFrame current_;
    bool open_ = false;
    bool sending_ = false;
    bool replaced_ = false;
};

}  // namespace merovanta::devservice
