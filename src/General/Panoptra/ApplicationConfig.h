#pragma once

#include <Merovanta/ActiveUser.h>

#include <cstdint>
#include <optional>
#include <string>

#include "General/Panoptra/PanoptraConfig.h"
#include "General/Panoptra/VisitConfig.h"

namespace merovanta {

/// The configuration that all components share; read at the moment of use.
struct ApplicationConfig {
    std::optional<std::string> hostname;
    /// A bare host name, or, once the host application has named one, a whole path.
    std::optional<std::string> cdnPath;
    std::optional<std::string> tenantId;
    std::optional<std::string> token;
    std::optional<ActiveUser> activeUserTag;
    std::optional<VisitConfig> visitConfig;
    std::optional<PanoptraConfig> panoptraConfig;
    std::optional<bool> chatAvailable;
    /// The host would have the session's stream on a WebSocket.
    bool prefersWebSocket = false;
};

}  // namespace merovanta
