#include "General/Panoptra/Network/MobileInitDTO.h"

namespace merovanta {

nlohmann::ordered_json MobileInitDTO::toJson() const {
    return {{"shId", shareId},    {"qdu", redirectId},     {"url", url},       {"start", start},
            {"init", initialize}, {"page", page.toJson()}, {"vId", visitorId}, {"sId", sessionId},
            {"viId", visitId},    {"tId", tenantId},       {"optin", optIn}};
}

}  // namespace merovanta
