#include "General/Panoptra/Network/InitSender.h"

#include <utility>

#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/MobileInitDTO.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

InitSender::Reply decodeReply(const HttpReply& reply) {
    if (const auto error = failureOf(reply)) return *error;
    if (!reply.data) return std::optional<MonitoringConfigDTO>();
    const auto json = parseJson(*reply.data);
    if (!json) return StringError("Cannot decode reply: it is not JSON");
    auto decoded = MonitoringConfigDTO::decode(*json);
    if (!decoded) return decoded.error();
    return std::optional(std::move(decoded.value()));
}

}  // namespace

InitSender::InitSender(std::shared_ptr<ApplicationConfigWrapper> wrapper, std::shared_ptr<MerovantaAPI> api)
    : applicationConfig(std::move(wrapper)), merovantaAPI(std::move(api)) {}

Result<std::string> InitSender::encodeRequest(const std::string& pageName, bool force) const {
    const ApplicationConfig& config = applicationConfig->config;
    MobileInitDTO request{.url = pageName, .initialize = force};
    if (const auto& session = config.panoptraConfig) {
        request.shareId = session->shareId.value_or("");
        request.start = session->startTime.value_or(0);
        request.optIn = session->optIn.value_or(false);
    }
    if (const auto& visit = config.visitConfig) {
        request.visitorId = visit->visitorId.value_or("");
        request.sessionId = visit->sessionId.value_or("");
        request.visitId = visit->visitId.value_or("");
    }
    request.tenantId = config.tenantId.value_or("");
    request.page = PageProperties::of(platform::current().application().mainScreen().bounds);
    return encodeJson(request.toJson());
}

void InitSender::sendInit(const std::string& pageName, bool force, Completion completion) const {
    auto body = encodeRequest(pageName, force);
    if (!body) {
        completion(body.error());
        return;
    }
    merovantaAPI->post(
        "api/in/im/c", {}, std::move(body.value()),
        [completion = std::move(completion)](const HttpReply& reply) { completion(decodeReply(reply)); });
}

}  // namespace merovanta
