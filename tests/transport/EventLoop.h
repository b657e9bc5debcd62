#pragma once

#include <QtCore/QTimer>
#include <chrono>
#include <functional>

namespace merovanta::test {

/// Handles the main thread's events and measures what keeps it from doing so.
class EventLoop {
 public:
    using Duration = std::chrono::steady_clock::duration;

    EventLoop();
    ~EventLoop();
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    /// False if the condition does not come to hold within the time. It is asked at least once a millisecond.
    bool runUntil(const std::function<bool()>& condition, Duration limit = std::chrono::seconds(20));
    void runFor(Duration duration);

    /// The longest turn of the loop so far, and begins anew. Neither conditions count nor the time for which
    /// other threads and processes kept this one from a processor.
    Duration takeLongestTurn();

 private:
    [[nodiscard]] Duration preempted() const;

    const int mSchedule;
    /// No turn waits longer than for this.
    QTimer mHeartbeat;
    Duration mLongestTurn{};
};

}  // namespace merovanta::test
