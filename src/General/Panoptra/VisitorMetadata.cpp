#include "General/Panoptra/VisitorMetadata.h"

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

VisitorMetadata::VisitorMetadata() {
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    if (!wrapper) return;
    tenantId = wrapper->config.tenantId;
    if (const auto& visit = wrapper->config.visitConfig) {
        visitorId = visit->visitorId;
        sessionId = visit->sessionId;
    }
}

nlohmann::ordered_json VisitorMetadata::toJson() const {
    auto json = nlohmann::ordered_json::object();
    addOptional(json, "tId", tenantId);
    addOptional(json, "vId", visitorId);
    addOptional(json, "sId", sessionId);
    return json;
}

Result<VisitorMetadata> VisitorMetadata::decode(const nlohmann::json& json) {
    VisitorMetadata metadata;
    metadata.tenantId.reset();
    metadata.visitorId.reset();
    metadata.sessionId.reset();
    JsonFields fields(json);
    fields.optional("tId", metadata.tenantId);
    fields.optional("vId", metadata.visitorId);
    fields.optional("sId", metadata.sessionId);
    if (const auto& error = fields.error()) return *error;
    return metadata;
}

}  // namespace merovanta
