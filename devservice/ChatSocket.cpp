#include "ChatSocket.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <utility>

#include "JsonBody.h"
#include "SocketTimeouts.h"
#include "Text.h"

namespace merovanta::devservice {

namespace asio = boost::asio;
namespace beast = boost::beast;
using nlohmann::json;

namespace {
// A text of the largest size with every character escaped.
constexpr std::size_t kMaxIncomingBytes = 32U << 10U;
constexpr std::size_t kMaxRefusals = 16;
}  // namespace

ChatSocket::ChatSocket(ClientStream stream, std::shared_ptr<void> slot, ContactRegistry& contacts,
                       std::string tenantId, std::string visitorId)
    : socket_(std::move(stream)),
      slot_(std::move(slot)),
      contacts_(contacts),
      tenantId_(std::move(tenantId)),
      visitorId_(std::move(visitorId)) {}

void ChatSocket::start(beast::http::request<beast::http::string_body> handshake) {
    handshake_ = std::move(handshake);
    socket_.set_option(socketTimeouts());
    socket_.read_message_max(kMaxIncomingBytes);
    socket_.async_accept(handshake_, [self = shared_from_this()](ErrorCode error) {
        if (error) return;
        self->open_ = true;
        Contact& contact = self->contacts_.obtain(self->tenantId_, self->visitorId_, currentMoment());
        self->contact_ = contact.number;
        self->contacts_.pageOpened(contact);
        self->read();
        self->scheduleSend();
    });
}

void ChatSocket::contactChanged(const Contact& contact) {
    if (contact.number == contact_) scheduleSend();
}

void ChatSocket::read() {
    socket_.async_read(incoming_, [self = shared_from_this()](ErrorCode error, std::size_t) {
        if (error) return self->closed();
        const std::string text = beast::buffers_to_string(self->incoming_.data());
        self->incoming_.consume(self->incoming_.size());
        self->receive(text);
        self->read();
    });
}

void ChatSocket::receive(const std::string& text) {
    const json message = parseObject(text);
    Contact* contact = contacts_.find(std::to_string(contact_));
    if (message.is_discarded() || contact == nullptr) return;
    const std::string type = textMember(message, "type");
    if (type == "typing") return contacts_.visitorTypes(*contact, currentMoment());
    if (type == "seen") {
        const json upTo = message.value("upTo", json());
        return upTo.is_number_unsigned() ? contacts_.seenUpTo(*contact, upTo.get<std::uint64_t>()) : void();
    }
    if (type != "message") return;
    std::string key = textMember(message, "key");
    std::string words = textMember(message, "text");
    if (key.empty() || key.size() > ChatMessage::kMaxKeyBytes) return;
    if (const auto problem = ChatHistory::problemOf(words)) return refuse(key, *problem);
    contact->lastSeen = currentMoment();
    contacts_.addMessage(*contact, {.at = contact->lastSeen,
                                    .agent = {},
                                    .text = std::move(words),
                                    .key = std::move(key),
                                    .document = {}});
}

void ChatSocket::refuse(const std::string& key, const std::string& reason) {
    if (refusals_.size() < kMaxRefusals)
        refusals_.push_back({{"type", "refused"}, {"key", key}, {"reason", reason}});
    scheduleSend();
}

void ChatSocket::scheduleSend() {
    if (!open_ || sending_ || std::exchange(sendScheduled_, true)) return;
    asio::post(socket_.get_executor(), [self = shared_from_this()] {
        self->sendScheduled_ = false;
        self->sendNext();
    });
}

void ChatSocket::sendNext() {
    if (!open_ || sending_ || !prepare()) return;
    sending_ = true;
    socket_.async_write(asio::buffer(text_), [self = shared_from_this()](ErrorCode error, std::size_t) {
        self->sending_ = false;
        if (!error) self->sendNext();
    });
}

bool ChatSocket::prepare() {
    if (!refusals_.empty()) {
        text_ = toText(refusals_.front());
        refusals_.pop_front();
        return true;
    }
    const Contact* contact = contacts_.find(std::to_string(contact_));
    if (contact == nullptr) return false;
    const bool reset = std::exchange(reset_, false);
    if (!reset && contact->chat.lastSequence() == sent_) {
        json state = stateOf(*contact);
        if (state == stateSent_) return false;
        text_ = toText(state);
        stateSent_ = std::move(state);
        return true;
    }
    text_ =
        toText({{"type", "messages"}, {"reset", reset}, {"messages", contact->chat.messagesAfter(sent_)}});
    sent_ = contact->chat.lastSequence();
    return true;
}

json ChatSocket::stateOf(const Contact& contact) const {
    return {{"type", "state"},
            {"typingUntil", contact.agentTypesUntil.time_since_epoch().count()},
            {"agent", contact.typingAgent},
            {"seenUpTo", contact.chat.agentReadUpTo()},
            {"now", currentMoment().time_since_epoch().count()}};
}

void ChatSocket::closed() {
    open_ = false;
    if (Contact* contact = contacts_.find(std::to_string(contact_))) contacts_.pageClosed(*contact);
}

}  // namespace merovanta::devservice
