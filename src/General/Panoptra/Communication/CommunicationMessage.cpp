#include "General/Panoptra/Communication/CommunicationMessage.h"

#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

nlohmann::ordered_json CommunicationMessage::toJson() const {
    return {{"c", rawValue(channel)}, {"p", payload}};
}

Result<CommunicationMessage> CommunicationMessage::decode(const nlohmann::json& json) {
    CommunicationMessage message;
    JsonFields fields(json);
    fields.required("c", message.channel);
    if (const auto& error = fields.error()) return *error;
    // Most clients do not care what it holds: that it holds nothing they could read is no reason to drop it.
    JsonFields payload(json);
    payload.required("p", message.payload);
    return message;
}

}  // namespace merovanta
