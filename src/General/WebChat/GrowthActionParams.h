#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Result.h"

namespace merovanta {

/// The texts and the colour with which the chat page is opened.
struct GrowthActionParams {
    std::optional<std::string> color;
    std::optional<std::string> hint;
    std::optional<std::string> title;
    std::optional<std::string> message;

    [[nodiscard]] static Result<GrowthActionParams> decode(const nlohmann::json& json);
};

}  // namespace merovanta
