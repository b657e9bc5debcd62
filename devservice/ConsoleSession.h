#pragma once

#include <array>
#include <boost/beast/core/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "ClientStream.h"
#include "ConsoleSources.h"

namespace merovanta::devservice {

class ConsoleHub;

/// One console page's WebSocket (the protocol is in README.md). Nothing is queued for a slow page: the
/// session only remembers what has changed, and when the socket is ready for the next message it is made from
/// the current state.
class ConsoleSession : public std::enable_shared_from_this<ConsoleSession> {
 public:
    /// `agent` is the id of whose page it is, empty for a program's; the hub outlives the session.
    ConsoleSession(ClientStream stream, std::shared_ptr<void> slot, ConsoleSources sources, ConsoleHub& hub,
                   std::string agent);

    void start(boost::beast::http::request<boost::beast::http::string_body> handshake);

    void settingsChanged();
    void visitorsChanged();
    void contactsChanged();
    void agentsChanged();
    void visitorChanged(std::uint32_t number);
    void frameArrived(std::uint32_t number);
    void visitorRemoved(std::uint32_t number);

    bool isOpen() const { return accepted_ && !closed_; }
    const std::string& agent() const { return agent_; }
    /// The visitor on view, 0 for none.
    std::uint32_t watched() const { return watched_; }

 private:
    using ErrorCode = boost::beast::error_code;

    void read();
    void onMessage(const std::string& text);
    void watch(std::uint32_t number);
    void watchChat(std::uint32_t number);

    /// Sends what has changed, after the current turn, so that changes of one request go out together.
    void scheduleSend();
    void sendNext();
    /// Makes the next JSON message in `text_`; false when there is nothing to say.
    bool prepareText();
    bool prepareTimeline();
    bool prepareChat();
    /// Makes the next binary message in `frame_`; false when the watched visitor has no new picture.
    bool prepareFrame();
    void onSent(ErrorCode error);

    boost::beast::websocket::stream<ClientStream> socket_;
    std::shared_ptr<void> slot_;
    ConsoleSources sources_;
    ConsoleHub& hub_;
    std::string agent_;
    boost::beast::http::request<boost::beast::http::string_body> handshake_;
    boost::beast::flat_buffer incoming_;

    bool settingsDirty_ = true;
    bool listDirty_ = true;
    std::set<std::uint32_t> dirtyVisitors_;
    std::uint32_t watched_ = 0;
    bool timelineReset_ = false;
    std::uint64_t timelineSent_ = 0;
    std::uint64_t frameSent_ = 0;
    bool contactsDirty_ = true;
    bool agentsDirty_ = true;
    std::uint32_t watchedChat_ = 0;
    bool chatReset_ = false;
    std::uint64_t chatSent_ = 0;

    bool accepted_ = false;
    bool closed_ = false;
    bool sendScheduled_ = false;
    bool sending_ = false;
    std::string text_;
    std::shared_ptr<const Frame> frame_;
    std::array<unsigned char, 16> frameHeader_{};
};

}  // namespace merovanta::devservice
