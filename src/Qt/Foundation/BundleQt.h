#pragma once

#include "Platform/Bundle.h"

namespace merovanta::qt {

/// Property lists in XML form among the program's resources: ":/bundles/<identifier>/<name>.plist".
class BundleQt final : public Bundle {
 public:
    BundleQt();

    [[nodiscard]] std::optional<nlohmann::json> propertyList(std::string_view bundleIdentifier,
                                                             std::string_view name) override;
};

}  // namespace merovanta::qt
