#pragma once

#include <cstdint>

namespace merovanta {

/// A tap of the agent's, in device pixels of the visitor's screen.
struct Click {
    std::int64_t x = 0;
    std::int64_t y = 0;
    bool operator==(const Click&) const = default;
};

}  // namespace merovanta
