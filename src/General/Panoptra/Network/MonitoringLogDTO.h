#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Panoptra/Network/VisitorActivityLogCategory.h"
#include "General/Panoptra/Network/VisitorActivityLogType.h"
#include "General/Panoptra/VisitorMetadata.h"
#include "General/Result.h"

namespace merovanta {

/// One entry of the service's log of what a visitor did.
struct MonitoringLogDTO {
    VisitorActivityLogCategory category = VisitorActivityLogCategory::COBROWSE;
    VisitorActivityLogType type = VisitorActivityLogType::COBROWSE_START;
    std::optional<std::string> value;
    std::optional<std::string> customCategory;
    VisitorMetadata meta;

    /// Absent values are left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;

    [[nodiscard]] static Result<MonitoringLogDTO> decode(const nlohmann::json& json);
};

}  // namespace merovanta
