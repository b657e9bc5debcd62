#include "ChatHistory.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace merovanta::devservice {
namespace {

std::size_t sizeOf(const ChatMessage& message) {
    const auto& document = message.document;
    return message.text.size() + message.key.size() +
           (document ? document->url.size() + document->name.size() + document->contentType.size() : 0);
}

}  // namespace

std::optional<std::string> ChatHistory::problemOf(std::string_view text) {
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) return "the message has no text";
    if (text.size() > kMaxTextBytes) return "the message is too long";
    return std::nullopt;
}

bool ChatHistory::add(ChatMessage message) {
    if (knows(message.key)) return false;
    message.sequence = ++lastSequence_;
    bytes_ += sizeOf(message);
    messages_.push_back(std::move(message));
    while (messages_.size() > kMaxMessages || bytes_ > kMaxBytes) {
        bytes_ -= sizeOf(messages_.front());
        messages_.pop_front();
    }
    return true;
}

bool ChatHistory::knows(const std::string& key) const {
    return !key.empty() && std::any_of(messages_.begin(), messages_.end(),
                                       [&](const ChatMessage& known) { return known.key == key; });
}

std::size_t ChatHistory::unread() const {
    return static_cast<std::size_t>(
        std::count_if(messages_.begin(), messages_.end(), [&](const ChatMessage& message) {
            return message.author == ChatMessage::Author::Visitor && message.sequence > readUpTo_;
        }));
}

bool ChatHistory::readUpTo(std::uint64_t sequence) {
    const std::uint64_t next = std::min(sequence, lastSequence_);
    if (next <= readUpTo_) return false;
    readUpTo_ = next;
    return true;
}

bool ChatHistory::seenUpTo(std::uint64_t sequence) {
    const std::uint64_t next = std::min(sequence, lastSequence_);
    if (next <= seenUpTo_) return false;
    seenUpTo_ = next;
    return true;
}

nlohmann::json ChatHistory::messagesAfter(std::uint64_t sequence) const {
    nlohmann::json result = nlohmann::json::array();
    for (const ChatMessage& message : messages_) {
        if (message.sequence > sequence) result.push_back(message.toJson());
    }
    return result;
}

}  // namespace merovanta::devservice
