#pragma once

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Communication/CommunicationMessage.h"
#include "General/Panoptra/Network/HealthCheck.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "Platform/Application.h"
#include "Platform/Timer.h"

namespace merovanta {

/// Polls for all registered clients at once, again and again. It ticks for ever once started, but polls only
/// while it is set running. It ends that itself after too many failures in a row, and then watches for a
/// reason to go on: the service is well again, the application has become active. Thread: main.
class XhrRunner : public std::enable_shared_from_this<XhrRunner> {
 public:
    XhrRunner(std::shared_ptr<MerovantaAPI> merovantaAPI,
              std::shared_ptr<ApplicationConfigWrapper> applicationConfig);

    /// Begins to tick, or begins the present pause anew; there is never more than one timer.
    void start();

    /// Ends the pause that failures have brought about: there is a connection again.
    void resume();

    /// The pause between two polls, in seconds; read when a pause begins.
    double currentRate = std::numeric_limits<double>::max();
    bool running = false;

 private:
    using Messages = std::vector<CommunicationMessage>;

    void scheduleTick();
    void tick();
    void poll();
    void polled(const HttpReply& reply, const std::optional<Messages>& messages);
    void handle(const HttpReply& reply, const std::optional<Messages>& messages);
    void countFailure();
    void pause();
    void endPause();
    static void handOver(const Messages& messages);

    int failedAttempts = 0;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;

    std::unique_ptr<Timer> mTimer;
    bool mIsPolling = false;
    // While the failures' pause lasts.
    std::shared_ptr<HealthCheck> mHealthCheck;
    std::unique_ptr<Observation> mActiveObservation;
};

}  // namespace merovanta
