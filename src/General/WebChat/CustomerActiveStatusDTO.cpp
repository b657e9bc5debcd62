#include "General/WebChat/CustomerActiveStatusDTO.h"

namespace merovanta {

nlohmann::ordered_json CustomerActiveStatusDTO::toJson() const {
    auto json = nlohmann::ordered_json::object();
    if (url) json["u"] = *url;
    if (type) json["t"] = rawValue(*type);
    if (deviceType) json["dT"] = rawValue(*deviceType);
    if (callId) json["cId"] = *callId;
    if (sessionId) json["sId"] = *sessionId;
    return json;
}

}  // namespace merovanta
