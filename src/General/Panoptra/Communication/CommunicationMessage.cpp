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
    fields.required("p", message.payload);
    if (const auto& error = fields.error()) return *error;
    return message;
}

}  // namespace merovanta
