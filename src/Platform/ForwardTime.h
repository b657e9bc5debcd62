#pragma once

#include <algorithm>
#include <chrono>
#include <mutex>
#include <optional>

namespace merovanta {

/// What a Clock makes of the system's clocks: a calendar that may be set at any moment, and time that only
/// passes. Any thread.
class ForwardTime {
 public:
    using Time = std::chrono::milliseconds;

    /// The time now. Of two threads that read the clocks at once the later may bring the earlier values.
    [[nodiscard]] Time advance(Time calendar, Time passed) {
        const std::scoped_lock lock(mMutex);
        if (mTold) {
            passed = std::max(passed, mPassed);
            calendar = std::max(calendar, *mTold + (passed - mPassed));
        }
        mTold = calendar;
        mPassed = passed;
        return calendar;
    }

    void restart() {
        const std::scoped_lock lock(mMutex);
        mTold.reset();
    }

 private:
    std::mutex mMutex;
    std::optional<Time> mTold;
    Time mPassed{};
};

}  // namespace merovanta
