#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Result.h"

namespace merovanta {

/// Whom a record is about.
struct VisitorMetadata {
    std::optional<std::string> tenantId;
    std::optional<std::string> visitorId;
    std::optional<std::string> sessionId;

    /// Takes the identifiers as they are in the shared configuration now. Thread: main.
    VisitorMetadata();

    /// Absent values are left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;

    [[nodiscard]] static Result<VisitorMetadata> decode(const nlohmann::json& json);
};

}  // namespace merovanta
