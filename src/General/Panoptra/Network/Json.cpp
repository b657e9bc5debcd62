#include "General/Panoptra/Network/Json.h"

namespace merovanta {

bool isNestedTooDeeply(std::string_view text) {
    int depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (isInText) {
            if (character == '\\') ++i;
            isInText = character != '"';
        } else if (character == '"') {
            isInText = true;
        } else if (character == '[' || character == '{') {
            if (++depth > maximumJsonDepth) return true;
        } else if (character == ']' || character == '}') {
            --depth;
        }
    }
    return false;
}

std::optional<nlohmann::json> parseJson(std::string_view text) {
    if (isNestedTooDeeply(text)) return std::nullopt;
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
