#include "General/ConstantUtils.h"

#include <mutex>
#include <nlohmann/json.hpp>

#include "Platform/Platform.h"

namespace merovanta {

namespace {

struct Cache {
    // Components may be resolved, and so made, on any thread.
    std::mutex mutex;
    std::optional<nlohmann::json> list;
};

Cache& cache() {
    static auto* const instance = new Cache();
    return *instance;
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
    const std::lock_guard lock(cache().mutex);
    auto& list = cache().list;
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
    const std::lock_guard lock(cache().mutex);
    cache().list.reset();
}

}  // namespace merovanta
