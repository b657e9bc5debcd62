#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace merovanta::devservice {

/// The JSON object in a body; discarded when it holds none, or one nested so deeply that walking it could
/// exhaust the stack.
nlohmann::json parseObject(std::string_view body);

/// A member's text, empty when it is missing or no text.
std::string textMember(const nlohmann::json& object, const char* key);

}  // namespace merovanta::devservice
