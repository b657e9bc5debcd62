#include "InMemory/BundleInMemory.h"

namespace merovanta::inmemory {

BundleInMemory::BundleInMemory() {
    lists[{"com.merovanta.panoptra.Panoptra", "Config"}] = {{"Hostname", "service.example"},
                                                            {"CdnHostname", "content.example"},
                                                            {"HttpProtocol", "https"},
                                                            {"WebSocketProtocol", "wss"}};
}

std::optional<nlohmann::json> BundleInMemory::propertyList(std::string_view bundleIdentifier,
                                                           std::string_view name) {
    const auto found = lists.find({std::string(bundleIdentifier), std::string(name)});
    if (found == lists.end() || !found->second.is_object()) return std::nullopt;
    return found->second;
}

}  // namespace merovanta::inmemory
