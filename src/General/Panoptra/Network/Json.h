#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "General/Result.h"

namespace merovanta {

constexpr int maximumJsonDepth = 64;

/// Whether lists and objects lie in each other deeper than that: a level takes many times its bytes in
/// memory.
[[nodiscard]] bool isNestedTooDeeply(std::string_view text);

/// Parses a text from outside; absent if it is not JSON, or nested too deeply.
[[nodiscard]] std::optional<nlohmann::json> parseJson(std::string_view text);

/// Adds a field to a record; an absent value is left out.
template <typename Value>
void addOptional(nlohmann::ordered_json& json, const char* key, const std::optional<Value>& value) {
    if (value) json[key] = *value;
}

/// The object as one line; an error if a text in it is not valid UTF-8.
[[nodiscard]] Result<std::string> encodeJson(const nlohmann::ordered_json& json);

}  // namespace merovanta
