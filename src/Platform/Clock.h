#pragma once

#include <chrono>

namespace merovanta {

/// The system's calendar time. Any thread.
class Clock {
 public:
    virtual ~Clock() = default;

    /// Since 1970-01-01T00:00:00Z. May jump when the user sets the device's clock.
    [[nodiscard]] virtual std::chrono::milliseconds sinceEpoch() const = 0;
};

}  // namespace merovanta
