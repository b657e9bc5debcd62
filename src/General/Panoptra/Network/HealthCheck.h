#pragma once

#include <functional>
#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "Platform/Timer.h"

namespace merovanta {

/// Asks the service whether it is well, again and again until it is. Held ready for whoever chooses the
/// transport; no session runs it by itself. Thread: main.
class HealthCheck : public std::enable_shared_from_this<HealthCheck> {
 public:
    HealthCheck(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// Begins to check; while a check runs it does nothing, and its callback is dropped. The callback is
    /// called once, on the main thread, when the service has answered that it is well, and not at all after a
    /// stop().
    void start(std::function<void()> healthy);

    void stop();

    [[nodiscard]] bool isRunning() const { return mIsRunning; }

 private:
    void check();
    void checked(bool passed);

    const int successResponseCode = 200;
    const double retryDelay = 1.0;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    bool mIsRunning = false;

    std::function<void()> mHealthy;
    std::unique_ptr<Timer> mRetryTimer;
    // Counts the starts, so that the answer to an earlier check does not pass for one to this.
    unsigned mRun = 0;
};

}  // namespace merovanta
