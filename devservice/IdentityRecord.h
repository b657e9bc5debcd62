#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>

namespace merovanta::devservice {

/// Who a visitor is, as the app reports it: a JSON object with any of the texts "id", "firstname",
/// "lastname", "email", "assignedUser" and the list of texts "tags", each bounded. Nothing when the body is
/// no such object; other keys and nulls are left out.
std::optional<nlohmann::json> parseIdentity(std::string_view body);

}  // namespace merovanta::devservice
