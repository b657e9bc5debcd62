#pragma once

#include <boost/beast/core/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <cstdint>
#include <deque>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "ClientStream.h"
#include "ContactRegistry.h"

namespace merovanta::devservice {

/// The WebSocket of one visitor's chat page (the protocol is in README.md). It sees the chat of its own
/// visitor id only. Messages are not queued for a slow page: they are taken from the chat's bounded history
/// when the socket is ready.
class ChatSocket : public std::enable_shared_from_this<ChatSocket> {
 public:
    ChatSocket(ClientStream stream, std::shared_ptr<void> slot, ContactRegistry& contacts,
               std::string tenantId, std::string visitorId);

    void start(boost::beast::http::request<boost::beast::http::string_body> handshake);

    /// To be called for every contact that changes.
    void contactChanged(const Contact& contact);

 private:
    using ErrorCode = boost::beast::error_code;

    void read();
    void receive(const std::string& text);
    void refuse(const std::string& key, const std::string& reason);
    void scheduleSend();
    void sendNext();
    /// Makes the next message in `text_`; false when there is nothing to say.
    bool prepare();
    /// What the page shows of the agents: who types, and how far they have read.
    nlohmann::json stateOf(const Contact& contact) const;
    void closed();

    boost::beast::websocket::stream<ClientStream> socket_;
    std::shared_ptr<void> slot_;
    ContactRegistry& contacts_;
    std::string tenantId_, visitorId_;
    boost::beast::http::request<boost::beast::http::string_body> handshake_;
    boost::beast::flat_buffer incoming_;
    std::uint32_t contact_ = 0;
    bool reset_ = true;
    std::uint64_t sent_ = 0;
    std::deque<nlohmann::json> refusals_;
    bool open_ = false;
    bool sendScheduled_ = false;
    bool sending_ = false;
    std::string text_;
    nlohmann::json stateSent_;
};

}  // namespace merovanta::devservice
