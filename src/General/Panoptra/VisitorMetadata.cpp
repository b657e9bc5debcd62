#include "General/Panoptra/VisitorMetadata.h"

namespace merovanta {

VisitorMetadata::VisitorMetadata(const ApplicationConfig& config) : tenantId(config.tenantId) {
    if (!config.visitConfig) return;
    visitorId = config.visitConfig->visitorId;
    sessionId = config.visitConfig->sessionId;
}

nlohmann::ordered_json VisitorMetadata::toJson() const {
    auto json = nlohmann::ordered_json::object();
    if (tenantId) json["tId"] = *tenantId;
    if (visitorId) json["vId"] = *visitorId;
    if (sessionId) json["sId"] = *sessionId;
    return json;
}

}  // namespace merovanta
