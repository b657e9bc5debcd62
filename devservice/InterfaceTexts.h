#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace merovanta::devservice {

/// The visitor's interface texts in a language ("de", "de-AT"); English when there is no translation.
nlohmann::json interfaceTexts(std::string_view language);

}  // namespace merovanta::devservice
