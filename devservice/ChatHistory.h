#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "ChatMessage.h"

namespace merovanta::devservice {

/// The last messages of a chat, bounded by number and by bytes; the oldest make room for new ones.
class ChatHistory {
 public:
    static constexpr std::size_t kMaxMessages = 200;
    static constexpr std::size_t kMaxBytes = 256U << 10U;
    static constexpr std::size_t kMaxTextBytes = 4U << 10U;

    /// What is wrong with a text that is to become a message, if anything.
    static std::optional<std::string> problemOf(std::string_view text);

    /// Numbers and keeps the message. One whose key is known already was sent again and changes nothing;
    /// false then.
    bool add(ChatMessage message);

    /// How many messages of the visitor the agent has not read.
    std::size_t unread() const;
    /// The agent has read everything up to a sequence number; false when it had before.
    bool readUpTo(std::uint64_t sequence);
    std::uint64_t agentReadUpTo() const { return readUpTo_; }
    /// The same of the visitor.
    bool seenUpTo(std::uint64_t sequence);
    std::uint64_t visitorSawUpTo() const { return seenUpTo_; }

    /// Sequence number of the newest message, 0 when there is none.
    std::uint64_t lastSequence() const { return lastSequence_; }
    const ChatMessage* last() const { return messages_.empty() ? nullptr : &messages_.back(); }

    /// The messages after a sequence number, oldest first.
    nlohmann::json messagesAfter(std::uint64_t sequence) const;

 private:
    bool knows(const std::string& key) const;

    std::deque<ChatMessage> messages_;
    std::size_t bytes_ = 0;
    std::uint64_t lastSequence_ = 0;
    std::uint64_t readUpTo_ = 0, seenUpTo_ = 0;
};

}  // namespace merovanta::devservice
