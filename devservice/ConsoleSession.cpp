#include "ConsoleSession.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <utility>

#include "ConsoleHub.h"
#include "JsonBody.h"
#include "SocketTimeouts.h"
#include "Text.h"

namespace merovanta::devservice {

namespace asio = boost::asio;
namespace beast = boost::beast;
using nlohmann::json;

namespace {

constexpr std::size_t kMaxIncomingBytes = 4096;
constexpr int kCompressionLevel = 3;

void putBigEndian(unsigned char* target, std::uint32_t value) {
    for (unsigned i = 0; i < 4; ++i)
        target[i] = static_cast<unsigned char>(value >> (24U - 8U * i));
}

json nowMilliseconds() {
    return currentMoment().time_since_epoch().count();
}

}  // namespace

ConsoleSession::ConsoleSession(ClientStream stream, std::shared_ptr<void> slot, ConsoleSources sources,
                               ConsoleHub& hub, std::string agent)
    : socket_(std::move(stream)),
      slot_(std::move(slot)),
      sources_(sources),
      hub_(hub),
      agent_(std::move(agent)) {}

void ConsoleSession::start(beast::http::request<beast::http::string_body> handshake) {
    handshake_ = std::move(handshake);
    socket_.set_option(socketTimeouts());
    socket_.read_message_max(kMaxIncomingBytes);
    beast::websocket::permessage_deflate compression;
    compression.server_enable = true;
    compression.compLevel = kCompressionLevel;
    socket_.set_option(compression);
    socket_.async_accept(handshake_, [self = shared_from_this()](ErrorCode error) {
        if (error) return;
        self->accepted_ = true;
        self->hub_.agentsChanged();
        self->read();
        self->scheduleSend();
    });
}

void ConsoleSession::settingsChanged() {
    settingsDirty_ = true;
    scheduleSend();
}

void ConsoleSession::visitorsChanged() {
    listDirty_ = true;
    scheduleSend();
}

void ConsoleSession::contactsChanged() {
    contactsDirty_ = true;
    scheduleSend();
}

void ConsoleSession::agentsChanged() {
    agentsDirty_ = true;
    scheduleSend();
}

void ConsoleSession::visitorChanged(std::uint32_t number) {
    dirtyVisitors_.insert(number);
    scheduleSend();
}

void ConsoleSession::frameArrived(std::uint32_t number) {
    if (number == watched_) scheduleSend();
}

void ConsoleSession::visitorRemoved(std::uint32_t number) {
    dirtyVisitors_.erase(number);
    if (watched_ == number) watched_ = 0;
    visitorsChanged();
}

void ConsoleSession::read() {
    socket_.async_read(incoming_, [self = shared_from_this()](ErrorCode error, std::size_t) {
        if (error) {
            self->closed_ = true;
            self->hub_.agentsChanged();
            return;
        }
        const std::string text = beast::buffers_to_string(self->incoming_.data());
        self->incoming_.consume(self->incoming_.size());
        self->onMessage(text);
        self->read();
    });
}

void ConsoleSession::onMessage(const std::string& text) {
    const json message = parseObject(text);
    if (message.is_discarded()) return;
    const std::string type = textMember(message, "type");
    if (type == "watch") {
        const bool byNumber = message.contains("visitor");
        const Visitor* visitor = byNumber ? sources_.visitors.find(textMember(message, "visitor"))
                                          : sources_.visitors.findToShow(textMember(message, "session"));
        watch(visitor == nullptr ? 0 : visitor->number());
    } else if (type == "chat") {
        const Contact* contact = sources_.contacts.find(textMember(message, "contact"));
        watchChat(contact == nullptr ? 0 : contact->number);
    }
}

void ConsoleSession::watch(std::uint32_t number) {
    watched_ = number;
    timelineReset_ = true;
    timelineSent_ = 0;
    frameSent_ = 0;
    hub_.agentsChanged();
}

void ConsoleSession::watchChat(std::uint32_t number) {
    watchedChat_ = number;
    chatReset_ = true;
    chatSent_ = 0;
    scheduleSend();
}

void ConsoleSession::scheduleSend() {
    if (!isOpen() || sending_ || std::exchange(sendScheduled_, true)) return;
    asio::post(socket_.get_executor(), [self = shared_from_this()] {
        self->sendScheduled_ = false;
        self->sendNext();
    });
}

void ConsoleSession::sendNext() {
    if (sending_) return;
    const auto sent = [self = shared_from_this()](ErrorCode error, std::size_t) { self->onSent(error); };
    if (prepareText()) {
        sending_ = true;
        socket_.text(true);
        socket_.compress(true);
        socket_.async_write(asio::buffer(text_), sent);
    } else if (prepareFrame()) {
        sending_ = true;
        socket_.binary(true);
        // Pictures are packed already.
        socket_.compress(false);
        const std::array<asio::const_buffer, 2> parts{asio::buffer(frameHeader_), asio::buffer(frame_->jpeg)};
        socket_.async_write(parts, sent);
    }
}

bool ConsoleSession::prepareText() {
    json message;
    if (std::exchange(settingsDirty_, false)) {
        message = {{"type", "settings"},
                   {"settings", sources_.initReply.settings()},
                   {"faults", sources_.faults.toJson()}};
    } else if (std::exchange(listDirty_, false)) {
        dirtyVisitors_.clear();
        message = {{"type", "visitors"},
                   {"complete", true},
                   {"visitors", sources_.visitors.summaries(currentMoment())},
                   {"present", sources_.presences.toJson()}};
    } else if (!dirtyVisitors_.empty()) {
        message = {{"type", "visitors"}, {"complete", false}, {"visitors", json::array()}};
        for (const std::uint32_t number : std::exchange(dirtyVisitors_, {})) {
            const Visitor* visitor = sources_.visitors.find(std::to_string(number));
            if (visitor != nullptr) message["visitors"].push_back(visitor->summary(currentMoment()));
        }
    } else if (std::exchange(contactsDirty_, false)) {
        message = {{"type", "contacts"}, {"contacts", sources_.contacts.toJson()}};
    } else if (std::exchange(agentsDirty_, false)) {
        message = hub_.agents();
        message["type"] = "agents";
        message["you"] = agent_;
    } else {
        return prepareTimeline() || prepareChat();
    }
    message["now"] = nowMilliseconds();
    text_ = toText(message);
    return true;
}

bool ConsoleSession::prepareTimeline() {
    const Visitor* visitor = watched_ == 0 ? nullptr : sources_.visitors.find(std::to_string(watched_));
    if (visitor == nullptr) return false;
    const bool reset = std::exchange(timelineReset_, false);
    const std::uint64_t newest = visitor->timeline().lastSequence();
    if (!reset && newest == timelineSent_) return false;
    text_ = toText({{"type", "timeline"},
                    {"visitor", std::to_string(watched_)},
                    {"reset", reset},
                    {"entries", visitor->timeline().entriesAfter(timelineSent_)},
                    {"now", nowMilliseconds()}});
    timelineSent_ = newest;
    return true;
}

bool ConsoleSession::prepareChat() {
    const Contact* contact = sources_.contacts.find(std::to_string(watchedChat_));
    if (contact == nullptr) return false;
    const bool reset = std::exchange(chatReset_, false);
    const std::uint64_t newest = contact->chat.lastSequence();
    if (!reset && newest == chatSent_) return false;
    text_ = toText({{"type", "chat"},
                    {"contact", std::to_string(watchedChat_)},
                    {"reset", reset},
                    {"messages", contact->chat.messagesAfter(chatSent_)},
                    {"now", nowMilliseconds()}});
    chatSent_ = newest;
    return true;
}

bool ConsoleSession::prepareFrame() {
    const Visitor* visitor = watched_ == 0 ? nullptr : sources_.visitors.find(std::to_string(watched_));
    if (visitor == nullptr || !visitor->lastFrame() || visitor->lastFrame()->number == frameSent_)
        return false;
    frame_ = visitor->lastFrame();
    frameSent_ = frame_->number;
    putBigEndian(frameHeader_.data(), watched_);
    putBigEndian(frameHeader_.data() + 4, static_cast<std::uint32_t>(frameSent_));
    const auto at = static_cast<std::uint64_t>(frame_->at.time_since_epoch().count());
    putBigEndian(frameHeader_.data() + 8, static_cast<std::uint32_t>(at >> 32U));
    putBigEndian(frameHeader_.data() + 12, static_cast<std::uint32_t>(at));
    return true;
}

void ConsoleSession::onSent(ErrorCode error) {
    sending_ = false;
    frame_.reset();
    if (!error) sendNext();
}

}  // namespace merovanta::devservice
