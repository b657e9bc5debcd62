#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "General/Panoptra/IOSConfig.h"

namespace merovanta {

/// The state of the screen-sharing session that the components share.
struct PanoptraConfig {
    /// Whether the agent's recording runs.
    std::optional<bool> isRecordingStarted;
    /// Whether the polling sender uses its short pause.
    std::optional<bool> increasedPollingFrequency;
    std::optional<IOSConfig> iosConfig;
    /// Milliseconds since 1970.
    std::optional<std::int64_t> startTime;
    std::optional<std::string> storageType;
    /// The code that the visitor reads to the agent.
    std::optional<std::string> shareId;
    /// The visitor's consent.
    std::optional<bool> optIn;

    /// A new start time, in whole seconds, and a new share code.
    void resetSession();
};

}  // namespace merovanta
