#include "General/WebChat/CustomerActiveStatusDTO.h"

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

nlohmann::ordered_json CustomerActiveStatusDTO::toJson() const {
    auto json = nlohmann::ordered_json::object();
    addOptional(json, "u", url);
    if (type) json["t"] = rawValue(*type);
    if (deviceType) json["dT"] = rawValue(*deviceType);
    addOptional(json, "cId", callId);
    addOptional(json, "sId", sessionId);
    return json;
}

}  // namespace merovanta
