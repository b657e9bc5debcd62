#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>

#include "Platform/Geometry.h"

namespace merovanta {

/// The size of the visitor's screen, in points.
struct PageProperties {
    std::int64_t width = 0;
    std::int64_t height = 0;
    /// Of use to the service's web pages only.
    std::int64_t docHeight = 0;
    std::int64_t docWidth = 0;

    /// Truncated to whole points. Bounds that are no finite 64-bit number end the process.
    [[nodiscard]] static PageProperties of(const Rect& bounds);

    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
