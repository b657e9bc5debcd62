#include "General/Panoptra/VisitConfig.h"

#include "General/Panoptra/Util/IdUtils.h"

namespace merovanta {

void VisitConfig::update(const std::string& newVisitId, const std::optional<std::string>& newVisitorId,
                         const std::optional<std::string>& newSessionId) {
    visitorId = newVisitorId ? *newVisitorId : IdUtils::deviceIdentifier();
    visitId = newVisitId;
    sessionId = newSessionId ? *newSessionId : IdUtils::newUuid();
}

}  // namespace merovanta
