#pragma once

#include <chrono>

namespace merovanta {

/// The calendar's time, as the system had it when it was first asked for, and counted on from there: it does
/// not jump when the system's clock is set. Any thread.
class Clock {
 public:
    virtual ~Clock() = default;

    /// Since 1970-01-01T00:00:00Z; never less than before.
    [[nodiscard]] virtual std::chrono::milliseconds sinceEpoch() const = 0;
};

}  // namespace merovanta
