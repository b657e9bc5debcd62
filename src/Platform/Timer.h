#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace merovanta {

/// A scheduled timer. Destroying the handle cancels it; it may be destroyed inside its own action.
class Timer {
 public:
    virtual ~Timer() = default;
};

/// Schedules timers on the main thread's run loop. Thread: main.
class TimerFactory {
 public:
    using Interval = std::chrono::nanoseconds;

    virtual ~TimerFactory() = default;

    /// Runs the action on the main thread after the interval, never earlier: once, or, if it repeats, every
    /// interval until the handle is destroyed. A repeating timer that is late skips what it missed. Never
    /// null.
    [[nodiscard]] virtual std::unique_ptr<Timer> schedule(Interval interval, bool repeats,
                                                          std::function<void()> action) = 0;
};

/// The interval for a number of seconds; one of more than a hundred years is cut to that.
[[nodiscard]] inline TimerFactory::Interval seconds(double value) {
    constexpr double longest = 100.0 * 365 * 24 * 3600;
    return std::chrono::duration_cast<TimerFactory::Interval>(
        std::chrono::duration<double>(value < longest ? value : longest));
}

}  // namespace merovanta
