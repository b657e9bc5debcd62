#include "General/Panoptra/Communication/PollReply.h"

#include <utility>

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

namespace {

constexpr std::size_t maximumMessages = 1000;

}  // namespace

std::optional<std::vector<CommunicationMessage>> parsePollReply(const std::string& body) {
    const auto json = parseJson(body);
    if (!json || !json->is_array() || json->size() > maximumMessages) return std::nullopt;
    std::vector<CommunicationMessage> messages;
    for (const auto& element : *json) {
        auto message = CommunicationMessage::decode(element);
        if (message) messages.push_back(std::move(message.value()));
    }
    return messages;
}

}  // namespace merovanta
