#include "Response.h"

#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {

Response Response::json(const nlohmann::json& value, unsigned status) {
    return {status, "application/json", toText(value), {}};
}

Response Response::error(unsigned status, std::string_view message) {
    return json({{"error", message}}, status);
}

}  // namespace merovanta::devservice
