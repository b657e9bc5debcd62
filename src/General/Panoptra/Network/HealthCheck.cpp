#include "General/Panoptra/Network/HealthCheck.h"

#include <utility>

#include "General/ConstantUtils.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

HealthCheck::HealthCheck(std::shared_ptr<ApplicationConfigWrapper> wrapper, std::shared_ptr<MerovantaAPI> api)
    : applicationConfig(std::move(wrapper)), merovantaAPI(std::move(api)) {}

void HealthCheck::start(std::function<void()> healthy) {
    assertMainThread();
    if (mIsRunning) return;
    mIsRunning = true;
    ++mRun;
    mHealthy = std::move(healthy);
    check();
}

void HealthCheck::stop() {
    assertMainThread();
    mIsRunning = false;
    mRetryTimer.reset();
    mHealthy = nullptr;
}

void HealthCheck::check() {
    const std::string url = ConstantUtils::valueOrEmpty("HttpProtocol") + "://" +
                            applicationConfig->config.hostname.value_or("") + "/api/ic/h";
    merovantaAPI->get(url, [weak = weak_from_this(), run = mRun](const HttpReply& reply) {
        const bool isAnswer = !reply.error && reply.response;
        ViewUtils::runOnMainQueue([weak, run, status = isAnswer ? reply.response->status : 0] {
            const auto self = weak.lock();
            if (self && self->mIsRunning && self->mRun == run)
                self->checked(status == self->successResponseCode);
        });
    });
}

void HealthCheck::checked(bool passed) {
    assertMainThread();
    if (passed) {
        mIsRunning = false;
        if (const auto healthy = std::exchange(mHealthy, nullptr)) healthy();
        return;
    }
    mRetryTimer = platform::current().timers().schedule(seconds(retryDelay), false, [this] { check(); });
}

}  // namespace merovanta
