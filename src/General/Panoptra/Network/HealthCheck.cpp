#include "General/Panoptra/Network/HealthCheck.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "General/ConstantUtils.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

HealthCheck::HealthCheck(std::shared_ptr<ApplicationConfigWrapper> wrapper, std::shared_ptr<MerovantaAPI> api)
    : HealthCheck(std::move(wrapper), std::move(api), Pacing()) {}

HealthCheck::HealthCheck(std::shared_ptr<ApplicationConfigWrapper> wrapper, std::shared_ptr<MerovantaAPI> api,
                         Pacing pacing)
    : applicationConfig(std::move(wrapper)), merovantaAPI(std::move(api)), mPacing(pacing) {}

void HealthCheck::start(Callbacks callbacks, int failuresBefore) {
    assertMainThread();
    if (mIsRunning) return;
    mIsRunning = true;
    mCallbacks = std::move(callbacks);
    mFailures = failuresBefore;
    if (mFailures > 0) {
        pause();
    } else {
        check();
    }
}

void HealthCheck::stop() {
    assertMainThread();
    mIsRunning = false;
    mRetryTimer.reset();
    mCheck.reset();
    mCallbacks = {};
}

void HealthCheck::check() {
    mRetryTimer.reset();
    mCheck = std::make_shared<Check>();
    mCheck->deadline =
        platform::current().timers().schedule(seconds(answerTimeout), false, [this] { checked(false); });
    const std::string url = ConstantUtils::valueOrEmpty("HttpProtocol") + "://" +
                            applicationConfig->config.hostname.value_or("") + "/api/ic/h";
    merovantaAPI->get(
        url,
        [weak = weak_from_this(), current = std::weak_ptr(mCheck)](const HttpReply& reply) {
            const bool isAnswer = !reply.error && reply.response;
            ViewUtils::runOnMainQueue([weak, current, status = isAnswer ? reply.response->status : 0] {
                const auto self = weak.lock();
                if (self && !current.expired()) self->checked(status == self->successResponseCode);
            });
        },
        // Given up by the network as well, so that checks without an answer do not pile up there. What counts
        // is whether the service can be reached now, not by what was open before.
        {.timeout = std::chrono::seconds(static_cast<int>(answerTimeout)), .onNewConnection = true});
}

void HealthCheck::checked(bool passed) {
    assertMainThread();
    const auto self = shared_from_this();
    mCheck.reset();
    if (passed) {
        const Callbacks callbacks = std::exchange(mCallbacks, {});
        mIsRunning = false;
        if (callbacks.healthy) callbacks.healthy();
        return;
    }
    ++mFailures;
    pause();
    // Copied: it may stop the checks.
    const auto unhealthy = mCallbacks.unhealthy;
    if (unhealthy) unhealthy();
}

void HealthCheck::pause() {
    const int longer = std::max(0, mFailures - mPacing.patience);
    const double pause = std::min(mPacing.longest, retryDelay * std::pow(mPacing.factor, longer));
    mRetryTimer = platform::current().timers().schedule(seconds(pause), false, [this] { check(); });
}

}  // namespace merovanta
