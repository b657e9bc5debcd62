#include "General/Panoptra/Communication/CommunicationBase.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "General/Fatal.h"
#include "General/MainThread.h"
#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/User/UserUtil.h"
#include "General/WebChat/CustomerActiveStatusDTO.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr const char* statusId = "STATUS";
constexpr double noRate = std::numeric_limits<double>::max();

std::string joinedTimestamp() {
    const std::chrono::duration<double, std::milli> now = platform::current().clock().sinceEpoch();
    const double rounded = std::round(now.count());
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(rounded >= -limit && rounded < limit)) fatalError("The current time is out of range");
    return "joinedTimestamp=" + std::to_string(static_cast<std::int64_t>(rounded));
}

}  // namespace

CommunicationBase::CommunicationBase(const std::shared_ptr<MerovantaAPI>& merovantaAPI,
                                     std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : runner(std::make_shared<XhrRunner>(merovantaAPI, wrapper)),
      applicationConfigWrapper(std::move(wrapper)) {}

void CommunicationBase::registerStatus() {
    UserUtil::tagUserIfNeeded([weak = weak_from_this()](bool) {
        ViewUtils::frontScreenName([weak](const std::optional<std::string>& name) {
            if (const auto self = weak.lock()) self->insertStatus(name.value_or(""));
        });
    });
}

void CommunicationBase::insertStatus(const std::string& pageName) {
    const ApplicationConfig& config = applicationConfigWrapper->config;
    CustomerActiveStatusDTO status{
        .url = pageName, .type = Type::CONFERENCE, .deviceType = DeviceType::MOBILE};
    if (config.activeUserTag) status.callId = config.activeUserTag->id;
    if (config.visitConfig) status.sessionId = config.visitConfig->sessionId;
    const auto payload = encodeJson(status.toJson());
    // What the service makes of the report is of no interest here.
    registerClient({.id = statusId,
                    .channel = CommunicationChannel::S,
                    .rate = 3000.0,
                    .callback = [](const std::string&) {},
                    .payload = payload ? payload.value() : "",
                    .additionalParams = joinedTimestamp()});
}

void CommunicationBase::releaseStatus() {
    release(statusId);
}

void CommunicationBase::release(const std::string& id) {
    assertMainThread();
    ClientRegistry::clients().erase(id);
    retune();
}

void CommunicationBase::releaseAll() {
    assertMainThread();
    ClientRegistry::clients().clear();
}

void CommunicationBase::registerClient(RegisteredClient client) {
    assertMainThread();
    const std::string id = client.id;
    ClientRegistry::clients().insert_or_assign(id, std::move(client));
    retune();
}

void CommunicationBase::retune() {
    double rate = noRate;
    for (const auto& [id, client] : ClientRegistry::clients())
        rate = std::min(rate, client.rate);
    if (rate == noRate) {
        runner->running = false;
        return;
    }
    runner->currentRate = rate;
    if (runner->running) return;
    runner->running = true;
    runner->start();
}

}  // namespace merovanta
