#include <Merovanta/MerovantaPanoptra.h>

#include <memory>
#include <utility>

#include "General/Log.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"

namespace merovanta {

namespace {

std::shared_ptr<Panoptra> resolvePanoptra() {
    auto panoptra = Injection::resolve<Panoptra>();
    if (!panoptra) Log::error("Cannot find instance of Panoptra");
    return panoptra;
}

void logTagFailure(const std::optional<StringError>& error) {
    if (error) Log::error("Cannot tag session: " + error->errorDescription());
}

}  // namespace

void MerovantaPanoptra::start(const std::string& tenantId, const std::string& token) {
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    if (!wrapper) {
        Log::error("Cannot find instance of ApplicationConfigWrapper");
        return;
    }
    wrapper->config.tenantId = tenantId;
    wrapper->config.token = token;
    start();
}

void MerovantaPanoptra::start() {
    const auto panoptra = resolvePanoptra();
    if (!panoptra) return;
    panoptra->start(false, std::nullopt, [](const std::optional<StringError>& error) {
        if (error) Log::error("Error when starting Panoptra: " + error->errorDescription());
    });
}

void MerovantaPanoptra::preferWebSocket(bool isPreferred) {
    if (const auto wrapper = Injection::resolve<ApplicationConfigWrapper>()) {
        wrapper->config.prefersWebSocket = isPreferred;
    } else {
        Log::error("Cannot find instance of ApplicationConfigWrapper");
    }
}

void MerovantaPanoptra::stop() {
    if (const auto panoptra = resolvePanoptra()) panoptra->stop();
}

bool MerovantaPanoptra::connected() const {
    if (!resolvePanoptra()) return false;
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    const auto& session = wrapper->config.panoptraConfig;
    return session && session->isRecordingStarted.value_or(false);
}

void MerovantaPanoptra::tag(const std::string& tag) {
    const auto panoptra = resolvePanoptra();
    if (!panoptra) return;
    if (const auto& sender = panoptra->messageSender()) {
        sender->sendTag(tag, Injection::resolve<ApplicationConfigWrapper>()->startTime(), logTagFailure);
    } else {
        logTagFailure(StringError("Cannot tag session without message sender"));
    }
}

void MerovantaPanoptra::registerCallbacks(std::function<void()> startCallback,
                                          std::function<void()> stopCallback) {
    if (const auto panoptra = resolvePanoptra()) {
        panoptra->registerCallbacks(std::move(startCallback), std::move(stopCallback));
    }
}

std::string MerovantaPanoptra::shareId() const {
    if (!resolvePanoptra()) return {};
    const auto& session = Injection::resolve<ApplicationConfigWrapper>()->config.panoptraConfig;
    return session ? session->shareId.value_or("") : "";
}

}  // namespace merovanta
