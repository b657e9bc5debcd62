#include "General/Panoptra/Network/Json.h"

namespace merovanta {

std::optional<nlohmann::json> parseJson(std::string_view text) {
    auto json = nlohmann::json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded()) return std::nullopt;
    return json;
}

Result<std::string> encodeJson(const nlohmann::ordered_json& json) {
    try {
        return json.dump();
    } catch (const nlohmann::json::exception& exception) {
        return StringError(std::string("Cannot encode JSON: ") + exception.what());
    }
}

}  // namespace merovanta
