#include "IdentityRecord.h"

#include <algorithm>

#include "JsonBody.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxTextBytes = 256;
constexpr std::size_t kMaxTags = 20;

std::string bounded(const json& text) {
    return boundedText(text.get_ref<const std::string&>(), kMaxTextBytes);
}

std::optional<json> boundedTags(const json& tags) {
    const auto isText = [](const json& tag) { return tag.is_string(); };
    if (!tags.is_array() || !std::all_of(tags.begin(), tags.end(), isText)) return std::nullopt;
    json result = json::array();
    for (std::size_t i = 0; i < std::min(tags.size(), kMaxTags); ++i)
        result.push_back(bounded(tags[i]));
    return result;
}

}  // namespace

std::optional<json> parseIdentity(std::string_view body) {
    const json record = parseObject(body);
    if (record.is_discarded()) return std::nullopt;
    json identity = json::object();
    for (const char* key : {"id", "firstname", "lastname", "email", "assignedUser"}) {
        const auto found = record.find(key);
        if (found == record.end() || found->is_null()) continue;
        if (!found->is_string()) return std::nullopt;
        identity[key] = bounded(*found);
    }
    const auto tags = record.find("tags");
    if (tags == record.end() || tags->is_null()) return identity;
    auto labels = boundedTags(*tags);
    if (!labels) return std::nullopt;
    identity["tags"] = std::move(*labels);
    return identity;
}

}  // namespace merovanta::devservice
