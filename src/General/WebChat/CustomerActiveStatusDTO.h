#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/WebChat/DeviceType.h"
#include "General/WebChat/Type.h"

namespace merovanta {

/// That a visitor is there, and where.
struct CustomerActiveStatusDTO {
    /// The name of the screen in front.
    std::optional<std::string> url;
    std::optional<Type> type;
    std::optional<DeviceType> deviceType;
    /// The identified visitor's id.
    std::optional<std::string> callId;
    std::optional<std::string> sessionId;

    /// Absent values are left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
