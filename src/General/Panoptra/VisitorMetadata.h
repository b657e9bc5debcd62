#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfig.h"

namespace merovanta {

/// Whom a record is about.
struct VisitorMetadata {
    std::optional<std::string> tenantId;
    std::optional<std::string> visitorId;
    std::optional<std::string> sessionId;

    /// Takes the identifiers as they are in the configuration now.
    explicit VisitorMetadata(const ApplicationConfig& config);

    /// Absent values are left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
