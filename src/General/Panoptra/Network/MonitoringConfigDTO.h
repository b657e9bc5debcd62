#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Panoptra/IOSConfig.h"
#include "General/Result.h"

namespace merovanta {

/// The service's answer to the initialisation: whether and how the session runs.
struct MonitoringConfigDTO {
    bool shouldStartMonitoring = false;
    /// "u" starts the session even if it was not forced.
    std::optional<std::string> startMonitoringType;
    /// Of use to the service's web pages only.
    bool htmlExists = false;
    /// The visitor's address as the service saw it.
    std::string ip;
    IOSConfig ios;
    std::optional<std::string> storageType;
    /// The visitor is to be left alone.
    bool ignoreIp = false;
    /// The service's veto against the WebSocket transport.
    std::optional<bool> disableWebSocket;
    std::optional<bool> chatActivated;

    [[nodiscard]] static Result<MonitoringConfigDTO> decode(const nlohmann::json& json);
};

}  // namespace merovanta
