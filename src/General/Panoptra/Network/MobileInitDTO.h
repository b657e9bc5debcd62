#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "General/Panoptra/Network/PageProperties.h"

namespace merovanta {

/// What the service is told before a session sends anything. Absent texts are sent as empty ones.
struct MobileInitDTO {
    std::string shareId;
    /// Always empty; the service expects the key.
    std::string redirectId;
    /// The name of the screen in front.
    std::string url;
    /// Milliseconds since 1970.
    std::int64_t start = 0;
    /// The start is forced.
    bool initialize = false;
    PageProperties page;
    std::string visitorId;
    std::string sessionId;
    std::string visitId;
    std::string tenantId;
    bool optIn = false;

    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
