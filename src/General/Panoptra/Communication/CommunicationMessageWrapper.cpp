#include "General/Panoptra/Communication/CommunicationMessageWrapper.h"

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

CommunicationMessageWrapper::CommunicationMessageWrapper(const ClientRegistry::Clients& clients) {
    for (const auto& [id, client] : clients) {
        channels.insert(client.channel);
        if (client.payload) messages.push_back({.channel = client.channel, .payload = *client.payload});
        if (!client.additionalParams) continue;
        if (additionalProperties) {
            *additionalProperties += "&" + *client.additionalParams;
        } else {
            additionalProperties = client.additionalParams;
        }
    }
}

nlohmann::ordered_json CommunicationMessageWrapper::toJson() const {
    auto channelsJson = nlohmann::ordered_json::array();
    for (const auto channel : channels)
        channelsJson.push_back(rawValue(channel));
    auto messagesJson = nlohmann::ordered_json::array();
    for (const auto& message : messages)
        messagesJson.push_back(message.toJson());
    nlohmann::ordered_json json{{"c", std::move(channelsJson)}, {"m", std::move(messagesJson)}};
    addOptional(json, "ad", additionalProperties);
    return json;
}

}  // namespace merovanta
