#include "General/WebChat/WebChatConfigurationDTO.h"

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

Result<WebChatConfigurationDTO> WebChatConfigurationDTO::decode(const std::string& text) {
    const auto json = parseJson(text);
    if (!json || !json->is_object()) return StringError("Cannot decode reply: it is not an object");
    WebChatConfigurationDTO configuration;
    const auto params = json->find("params");
    if (params == json->end() || params->is_null()) return configuration;
    auto decoded = GrowthActionParams::decode(*params);
    if (!decoded) return decoded.error();
    configuration.params = std::move(decoded.value());
    return configuration;
}

}  // namespace merovanta
