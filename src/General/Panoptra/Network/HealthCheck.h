#pragma once

#include <functional>
#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "Platform/Timer.h"

namespace merovanta {

/// Asks the service whether it is well, again and again until it is. Thread: main.
class HealthCheck : public std::enable_shared_from_this<HealthCheck> {
 public:
    /// How the pauses grow: those after the first failures are of one second, each that follows is longer
    /// than the one before by the factor, up to the longest.
    struct Pacing {
        int patience = 10;
        double factor = 1.05;
        double longest = 10;
    };

    /// Called on the main thread, never inside start(), and not after a stop().
    struct Callbacks {
        /// Once: the service has answered that it is well.
        std::function<void()> healthy;
        /// For each check that failed; the next follows by itself.
        std::function<void()> unhealthy;
    };

    HealthCheck(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                std::shared_ptr<MerovantaAPI> merovantaAPI);
    HealthCheck(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                std::shared_ptr<MerovantaAPI> merovantaAPI, Pacing pacing);

    /// Begins to check; while a check runs it does nothing, and its callbacks are dropped. If so many
    /// attempts have failed before, the first check comes after the pause that is due by then, else at once.
    void start(Callbacks callbacks, int failuresBefore = 0);

    void stop();

    [[nodiscard]] bool isRunning() const { return mIsRunning; }

 private:
    /// One check under way: an answer to one that was given up finds it gone.
    struct Check {
        std::unique_ptr<Timer> deadline;
    };

    void check();
    void checked(bool passed);
    void pause();

    const int successResponseCode = 200;
    const double retryDelay = 1.0;
    // A service that is there answers sooner; where the network is gone, nothing ever does.
    const double answerTimeout = 2.0;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    bool mIsRunning = false;

    Pacing mPacing;
    Callbacks mCallbacks;
    int mFailures = 0;
    std::unique_ptr<Timer> mRetryTimer;
    std::shared_ptr<Check> mCheck;
};

}  // namespace merovanta
