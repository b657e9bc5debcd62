#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "General/Result.h"

namespace merovanta {

/// The service's masking lists.
struct IOSConfig {
    /// View tags, in decimal.
    std::vector<std::string> blacklist;
    /// Class names.
    std::vector<std::string> blacklistClasses;

    bool operator==(const IOSConfig&) const = default;

    [[nodiscard]] static Result<IOSConfig> decode(const nlohmann::json& json);
};

}  // namespace merovanta
