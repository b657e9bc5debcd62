#include "General/Panoptra/Communication/XhrRunner.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Communication/CommunicationMessageWrapper.h"
#include "General/Panoptra/Communication/PollReply.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr int maximumFailures = 10;
// Nobody waits for an invitation: asked less and less often.
constexpr HealthCheck::Pacing pacing{.patience = 1, .factor = 2, .longest = 60};

}  // namespace

XhrRunner::XhrRunner(std::shared_ptr<MerovantaAPI> api, std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : merovantaAPI(std::move(api)),
      applicationConfig(std::move(wrapper)),
      mHealthCheck(std::make_shared<HealthCheck>(applicationConfig, merovantaAPI, pacing)) {
    Log::debug("create");
}

void XhrRunner::start() {
    assertMainThread();
    endPause();
    // The reply to a poll under way begins the next pause by itself.
    if (!mIsPolling) scheduleTick();
}

void XhrRunner::scheduleTick() {
    mTimer = platform::current().timers().schedule(seconds(currentRate), false, [this] { tick(); });
}

void XhrRunner::tick() {
    assertMainThread();
    if (running && !ClientRegistry::clients().empty()) {
        poll();
    } else {
        scheduleTick();
    }
}

void XhrRunner::poll() {
    Log::debug("Execute polling");
    mIsPolling = true;
    const ApplicationConfig& config = applicationConfig->config;
    const VisitConfig visit = config.visitConfig.value_or(VisitConfig());
    const MerovantaAPI::Query query{{"tId", config.tenantId.value_or("")},
                                    {"vId", visit.visitorId.value_or("")},
                                    {"sId", visit.sessionId.value_or("")},
                                    {"cId", ""}};
    auto completion = [weak = weak_from_this()](HttpReply reply) {
        // Parsed here, off the main thread.
        auto messages = reply.data ? parsePollReply(*reply.data) : Messages();
        reply.data.reset();
        ViewUtils::runOnMainQueue([weak, reply = std::move(reply), messages = std::move(messages)] {
            if (const auto self = weak.lock()) self->polled(reply, messages);
        });
    };
    auto body = encodeJson(CommunicationMessageWrapper(ClientRegistry::clients()).toJson());
    if (body) {
        merovantaAPI->post("api/in/co", query, std::move(body.value()), std::move(completion));
    } else {
        completion(HttpReply{.error = body.error()});
    }
}

void XhrRunner::polled(const HttpReply& reply, const std::optional<Messages>& messages) {
    assertMainThread();
    handle(reply, messages);
    mIsPolling = false;
    scheduleTick();
}

void XhrRunner::handle(const HttpReply& reply, const std::optional<Messages>& messages) {
    if (reply.error) {
        Log::error("Poll failed: " + reply.error->errorDescription());
        countFailure();
        return;
    }
    failedAttempts = 0;
    if (!reply.response) {
        Log::error("Poll failed wil nil response");
        countFailure();
    } else if (messages) {
        handOver(*messages);
    } else {
        Log::warning("Cannot parse poll reply");
    }
}

void XhrRunner::countFailure() {
    if (++failedAttempts <= maximumFailures) return;
    Log::warning("Exceed max retries. Stop");
    running = false;
    pause();
}

void XhrRunner::pause() {
    const auto goOn = [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->resume();
    };
    mHealthCheck->start({.healthy = goOn});
    mActiveObservation = platform::current().application().observeDidBecomeActive(goOn);
}

void XhrRunner::endPause() {
    mHealthCheck->stop();
    mActiveObservation.reset();
}

void XhrRunner::resume() {
    assertMainThread();
    if (!mActiveObservation) return;
    endPause();
    failedAttempts = 0;
    // The last client may have been released in the meantime.
    running = !ClientRegistry::clients().empty();
}

void XhrRunner::handOver(const Messages& messages) {
    std::vector<std::string> ids;
    for (const auto& [id, client] : ClientRegistry::clients())
        ids.push_back(id);
    for (const auto& message : messages) {
        for (const auto& id : ids) {
            // Looked up again, and copied: a callback may change the registry.
            const auto client = ClientRegistry::clients().find(id);
            if (client == ClientRegistry::clients().end() || client->second.channel != message.channel)
                continue;
            if (const auto callback = client->second.callback) callback(message.payload);
        }
    }
}

}  // namespace merovanta
