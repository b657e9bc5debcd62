#include "General/Panoptra/ApplicationConfigWrapper.h"

#include "General/ConstantUtils.h"
#include "General/Panoptra/Util/IdUtils.h"

namespace merovanta {

ApplicationConfigWrapper::ApplicationConfigWrapper() {
    config.visitConfig.emplace();
    config.panoptraConfig.emplace();
    config.hostname = ConstantUtils::value("Hostname");
    config.cdnPath = ConstantUtils::value("CdnHostname");
}

void ApplicationConfigWrapper::renewVisit(const std::optional<std::string>& sessionId) {
    if (!config.visitConfig) return;
    const auto visitorId = config.activeUserTag ? config.activeUserTag->id : std::nullopt;
    config.visitConfig->update(IdUtils::newUuid(), visitorId, sessionId);
}

std::int64_t ApplicationConfigWrapper::startTime() const {
    return config.panoptraConfig ? config.panoptraConfig->startTime.value_or(0) : 0;
}

}  // namespace merovanta
