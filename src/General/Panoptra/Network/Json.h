#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "General/Result.h"

namespace merovanta {

/// Parses a text from outside; absent if it is not JSON.
[[nodiscard]] std::optional<nlohmann::json> parseJson(std::string_view text);

/// The object as one line; an error if a text in it is not valid UTF-8.
[[nodiscard]] Result<std::string> encodeJson(const nlohmann::ordered_json& json);

}  // namespace merovanta
