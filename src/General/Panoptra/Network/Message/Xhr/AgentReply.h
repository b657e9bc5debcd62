#pragma once

#include <string>
#include <vector>

#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"

namespace merovanta {

/// The agent's messages in the reply to one POST of the polled stream: a JSON array of texts, each of which
/// holds a JSON array of messages.
struct AgentReply {
    /// More messages in one reply are no agent's.
    static constexpr std::size_t maximumMessages = 1000;

    /// In order.
    std::vector<BidirectionalMessage> messages;
    /// The reply, or a text in it, is not what it should be, or holds too many messages; those before that
    /// place are kept.
    bool isMalformed = false;

    /// Elements that are no texts, texts that hold no array and messages that are no objects are skipped.
    /// Any thread.
    [[nodiscard]] static AgentReply parse(const std::string& body, const BidirectionalMessageParser& parser);
};

}  // namespace merovanta
