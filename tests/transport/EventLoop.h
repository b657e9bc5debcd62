#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <utility>

namespace merovanta::test {

/// Handles the main thread's events and measures what keeps it from doing so.
class EventLoop {
 public:
    using Clock = std::chrono::steady_clock;

    EventLoop() {
        mHeartbeat.setTimerType(Qt::PreciseTimer);
        mHeartbeat.start(std::chrono::milliseconds(1));
    }

    /// False if the condition does not come to hold within the time. It is asked at least once a millisecond.
    bool runUntil(const std::function<bool()>& condition, Clock::duration limit = std::chrono::seconds(20)) {
        const auto end = Clock::now() + limit;
        while (!condition()) {
            const auto begin = Clock::now();
            const auto before = preempted();
            if (begin > end) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            mLongestTurn = std::max(mLongestTurn, Clock::now() - begin - (preempted() - before));
        }
        return true;
    }

    void runFor(Clock::duration duration) {
        runUntil([] { return false; }, duration);
    }

    /// The longest turn of the loop so far, and begins anew. Neither conditions count nor the time for which
    /// other threads and processes kept this one from a processor.
    Clock::duration takeLongestTurn() { return std::exchange(mLongestTurn, {}); }

 private:
    static std::chrono::nanoseconds preempted() {
        long long running = 0;
        long long waiting = 0;
        std::ifstream("/proc/thread-self/schedstat") >> running >> waiting;
        return std::chrono::nanoseconds(waiting);
    }

    /// No turn waits longer than for this.
    QTimer mHeartbeat;
    Clock::duration mLongestTurn{};
};

}  // namespace merovanta::test
