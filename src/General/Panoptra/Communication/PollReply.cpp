#include "General/Panoptra/Communication/PollReply.h"

#include <utility>

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

namespace {

constexpr std::size_t maximumMessages = 1000;

/// The messages as they are, or in an object like the one that asked for them.
const nlohmann::json* listOf(const nlohmann::json& reply) {
    if (reply.is_array()) return &reply;
    const auto messages = reply.is_object() ? reply.find("m") : reply.end();
    return messages != reply.end() && messages->is_array() ? &*messages : nullptr;
}

}  // namespace

std::optional<std::vector<CommunicationMessage>> parsePollReply(const std::string& body) {
    const auto json = parseJson(body);
    const auto* const list = json ? listOf(*json) : nullptr;
    if (!list || list->size() > maximumMessages) return std::nullopt;
    std::vector<CommunicationMessage> messages;
    for (const auto& element : *list) {
        auto message = CommunicationMessage::decode(element);
        if (message) messages.push_back(std::move(message.value()));
    }
    return messages;
}

}  // namespace merovanta
