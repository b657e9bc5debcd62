#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace merovanta::devservice {

/// The reply for a chat configuration. Every id has one; some make the reply poorer, for tests: "empty" has
/// no texts at all, "blank" has none of them.
nlohmann::json chatConfiguration(std::string_view id);

}  // namespace merovanta::devservice
