#pragma once

#include <memory>
#include <utility>

#include "General/Panoptra/Network/HealthCheck.h"
#include "General/Panoptra/Network/Message/PingSender.h"
#include "General/Panoptra/Network/MonitoringSender.h"

namespace merovanta {

/// What the session controller needs of the network beside its transport.
struct NetworkManager {
    NetworkManager(std::shared_ptr<PingSender> ping, std::shared_ptr<HealthCheck> health,
                   std::shared_ptr<MonitoringSender> monitoring)
        : pingSender(std::move(ping)),
          healthCheck(std::move(health)),
          monitoringSender(std::move(monitoring)) {}

    std::shared_ptr<PingSender> pingSender;
    std::shared_ptr<HealthCheck> healthCheck;
    std::shared_ptr<MonitoringSender> monitoringSender;
};

}  // namespace merovanta
