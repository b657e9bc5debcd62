#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace merovanta {

/// The resources packed into the library. Any thread.
class Bundle {
 public:
    virtual ~Bundle() = default;

    /// The property list of this name (without extension) in the bundle with this identifier, as a JSON
    /// object; absent if there is no such bundle or list, or the list is no dictionary.
    [[nodiscard]] virtual std::optional<nlohmann::json> propertyList(std::string_view bundleIdentifier,
                                                                     std::string_view name) = 0;
};

}  // namespace merovanta
