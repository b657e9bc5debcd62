#include "General/ConstantUtils.h"

#include <nlohmann/json.hpp>

#include "Platform/Platform.h"

namespace merovanta {

namespace {

std::optional<nlohmann::json>& cachedList() {
    static std::optional<nlohmann::json> list;
    return list;
}

std::optional<nlohmann::json> loadList() {
    if (!platform::isInstalled()) return std::nullopt;
    Bundle& bundle = platform::current().bundle();
    for (const std::string_view identifier :
         {"com.merovanta.panoptra.Panoptra", "com.merovanta.panoptra.PanoptraConference"}) {
        if (auto list = bundle.propertyList(identifier, "Config")) return list;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> ConstantUtils::value(std::string_view key) {
    auto& list = cachedList();
    if (!list) list = loadList();
    if (!list) return std::nullopt;
    const auto entry = list->find(key);
    if (entry == list->end() || !entry->is_string()) return std::nullopt;
    return entry->get<std::string>();
}

std::string ConstantUtils::valueOrEmpty(std::string_view key) {
    return value(key).value_or(std::string());
}

void ConstantUtils::forget() {
    cachedList().reset();
}

}  // namespace merovanta
