#include "General/Panoptra/Network/Message/Xhr/XhrSender.h"

#include "General/ConstantUtils.h"

namespace merovanta {

std::string XhrSender::endpointUrl(const std::string& url, const ApplicationConfig& config) {
    const VisitConfig visit = config.visitConfig.value_or(VisitConfig());
    const auto storageType = config.panoptraConfig ? config.panoptraConfig->storageType : std::nullopt;
    return ConstantUtils::valueOrEmpty("HttpProtocol") + "://" + config.hostname.value_or("") +
           "/api/ix/m?id=" + visit.visitId.value_or("") + "&sId=" + visit.sessionId.value_or("") +
           "&tId=" + config.tenantId.value_or("") + "&vId=" + visit.visitorId.value_or("") + "&url=" + url +
           "&fsTy=" + storageType.value_or("");
}

}  // namespace merovanta
