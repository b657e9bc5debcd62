#pragma once

#include <map>
#include <string>
#include <utility>

#include "Platform/Bundle.h"

namespace merovanta::inmemory {

/// Holds what its owner puts in; begins with a "Config" that names invented hosts.
class BundleInMemory : public Bundle {
 public:
    BundleInMemory();

    [[nodiscard]] std::optional<nlohmann::json> propertyList(std::string_view bundleIdentifier,
                                                             std::string_view name) override;

    /// By bundle identifier and name.
    std::map<std::pair<std::string, std::string>, nlohmann::json> lists;
};

}  // namespace merovanta::inmemory
