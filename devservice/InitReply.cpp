#include "InitReply.h"

#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxMasks = 256;
constexpr std::size_t kMaxTextBytes = 256;

template <typename T>
json orNull(const std::optional<T>& value) {
    return value ? json(*value) : json();
}

bool read(const json& value, bool& target) {
    if (!value.is_boolean()) return false;
    target = value.get<bool>();
    return true;
}

bool read(const json& value, std::string& target) {
    if (!value.is_string() || value.get_ref<const std::string&>().size() > kMaxTextBytes) return false;
    target = value.get<std::string>();
    return true;
}

template <typename T>
bool read(const json& value, std::optional<T>& target) {
    target.reset();
    return value.is_null() || read(value, target.emplace());
}

bool read(const json& value, std::vector<std::string>& target) {
    if (!value.is_array() || value.size() > kMaxMasks) return false;
    target.clear();
    for (const json& item : value) {
        if (!read(item, target.emplace_back())) return false;
    }
    return true;
}

}  // namespace

json InitReply::body(const std::string& visitorAddress) const {
    json reply = {{"s", startMonitoring},
                  {"h", false},
                  {"ip", visitorAddress},
                  {"ios", {{"blacklist", maskedTags}, {"blacklistClasses", maskedClasses}}},
                  {"x", ignoreVisitor}};
    if (startType) reply["st"] = *startType;
    if (storageType) reply["fsTy"] = *storageType;
    if (disableWebSocket) reply["pnWS"] = *disableWebSocket;
    if (chatActivated) reply["cA"] = *chatActivated;
    return reply;
}

json InitReply::settings() const {
    return {{"s", startMonitoring},        {"st", orNull(startType)},          {"x", ignoreVisitor},
            {"fsTy", orNull(storageType)}, {"pnWS", orNull(disableWebSocket)}, {"cA", orNull(chatActivated)},
            {"blacklist", maskedTags},     {"blacklistClasses", maskedClasses}};
}

std::optional<std::string> InitReply::apply(const json& changes) {
    if (!changes.is_object()) return "the settings must be a JSON object";
    InitReply next = *this;
    for (const auto& [key, value] : changes.items()) {
        const bool valid = key == "s"                  ? read(value, next.startMonitoring)
                           : key == "st"               ? read(value, next.startType)
                           : key == "x"                ? read(value, next.ignoreVisitor)
                           : key == "fsTy"             ? read(value, next.storageType)
                           : key == "pnWS"             ? read(value, next.disableWebSocket)
                           : key == "cA"               ? read(value, next.chatActivated)
                           : key == "blacklist"        ? read(value, next.maskedTags)
                           : key == "blacklistClasses" ? read(value, next.maskedClasses)
                                                       : false;
        if (!valid) return "unknown setting or wrong type: " + singleLine(boundedText(key, 64));
    }
    *this = std::move(next);
    return std::nullopt;
}

}  // namespace merovanta::devservice
