#pragma once

#include <cstdint>

namespace merovanta::quick {

/// The numbers that tell pictures apart: each is greater than all before. Any thread.
class PaintSerialQuick {
 public:
    PaintSerialQuick() = delete;

    [[nodiscard]] static std::uint64_t next();

    /// Makes every window's pictures out of date, although none has painted anything.
    static void outdateAll();

    /// The number of the last outdateAll(); 0 before.
    [[nodiscard]] static std::uint64_t outdated();
};

}  // namespace merovanta::quick
