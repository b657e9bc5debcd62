#pragma once

#include <chrono>

namespace merovanta {

/// The calendar's time. It follows the system's: it passes while the machine is suspended, and when the
/// system's clock is put forward, so is this one. Any thread.
class Clock {
 public:
    virtual ~Clock() = default;

    /// Since 1970-01-01T00:00:00Z; never less than before, unless restarted in between. A system's clock that
    /// is put back is not followed: the time then counts on from where it was.
    [[nodiscard]] virtual std::chrono::milliseconds sinceEpoch() = 0;

    /// From here on it is the system's time again, even if that is earlier than what was told before.
    virtual void restart() = 0;
};

}  // namespace merovanta
