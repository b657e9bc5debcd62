#include "JsonBody.h"

namespace merovanta::devservice {

using nlohmann::json;

json parseObject(std::string_view body) {
    constexpr int maxDepth = 32;
    bool tooDeep = false;
    const auto withinDepth = [&](int depth, json::parse_event_t, json&) {
        tooDeep = tooDeep || depth > maxDepth;
        return !tooDeep;
    };
    json value = json::parse(body.begin(), body.end(), withinDepth, false);
    return value.is_object() && !tooDeep ? value : json(json::value_t::discarded);
}

std::string textMember(const json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace merovanta::devservice
