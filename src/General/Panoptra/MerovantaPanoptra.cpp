#include <Merovanta/MerovantaPanoptra.h>

#include <memory>
#include <utility>

#include "General/Log.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"

namespace merovanta {

namespace {

constexpr const char* noInstance = "Cannot find instance of Panoptra";

std::shared_ptr<Panoptra> resolvePanoptra() {
    auto panoptra = Injection::resolve<Panoptra>();
    if (!panoptra) Log::error(noInstance);
    return panoptra;
}

}  // namespace

void MerovantaPanoptra::start(const std::string& tenantId, const std::string& token) {
    start(tenantId, token, {});
}

void MerovantaPanoptra::start() {
    start(Outcome());
}

void MerovantaPanoptra::start(const std::string& tenantId, const std::string& token, Outcome outcome) {
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    if (!wrapper) {
        const std::string error = "Cannot find instance of ApplicationConfigWrapper";
        Log::error(error);
        if (outcome) outcome(error);
        return;
    }
    wrapper->config.tenantId = tenantId;
    wrapper->config.token = token;
    start(std::move(outcome));
}

void MerovantaPanoptra::start(Outcome outcome) {
    const auto panoptra = resolvePanoptra();
    if (!panoptra) {
        if (outcome) outcome(noInstance);
        return;
    }
    panoptra->start(false, std::nullopt, SessionStarter::host,
                    [weak = std::weak_ptr(panoptra),
                     outcome = std::move(outcome)](const std::optional<StringError>& error) {
                        if (error) Log::error("Error when starting Panoptra: " + error->errorDescription());
                        const auto controller = weak.lock();
                        const bool isLeftAlone = !error && controller && !controller->isRunning();
                        if (!outcome) return;
                        if (isLeftAlone) return outcome(Panoptra::notWanted);
                        outcome(error ? std::optional(error->errorDescription()) : std::nullopt);
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
    if (const auto panoptra = resolvePanoptra()) panoptra->stop(SessionEnd::host);
}

bool MerovantaPanoptra::connected() const {
    if (!resolvePanoptra()) return false;
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    const auto& session = wrapper->config.panoptraConfig;
    return session && session->isRecordingStarted.value_or(false);
}

void MerovantaPanoptra::tag(const std::string& text) {
    tag(text, {});
}

void MerovantaPanoptra::tag(const std::string& tag, Outcome outcome) {
    const auto panoptra = resolvePanoptra();
    if (!panoptra) {
        if (outcome) outcome(noInstance);
        return;
    }
    auto completion = [outcome = std::move(outcome),
                       weak = std::weak_ptr(panoptra)](const std::optional<StringError>& error) {
        if (error) Log::error("Cannot tag session: " + error->errorDescription());
        if (!outcome) return;
        const auto controller = weak.lock();
        if (!error && !(controller && controller->isRunning())) return outcome("No session is running");
        if (!error && controller->observers()->status().state == SessionState::suspended)
            return outcome("The application is in the background");
        outcome(error ? std::optional(error->errorDescription()) : std::nullopt);
    };
    if (const auto& sender = panoptra->messageSender()) {
        sender->sendTag(tag, Injection::resolve<ApplicationConfigWrapper>()->startTime(),
                        std::move(completion));
    } else {
        completion(StringError("Cannot tag session without message sender"));
    }
}

SessionStatus MerovantaPanoptra::status() const {
    const auto panoptra = resolvePanoptra();
    return panoptra ? panoptra->observers()->status() : SessionStatus();
}

std::unique_ptr<Observation> MerovantaPanoptra::observe(std::function<void(const SessionStatus&)> observer) {
    const auto panoptra = resolvePanoptra();
    return panoptra ? panoptra->observers()->add(std::move(observer)) : nullptr;
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
