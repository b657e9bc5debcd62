#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>

namespace merovanta::inmemory {

/// A world in which time passes only when it is told to: runs tasks and timers on one thread, in an order
/// that is the same every time.
class VirtualTime : public std::enable_shared_from_this<VirtualTime> {
 public:
    using Duration = std::chrono::nanoseconds;
    using Task = std::function<void()>;
    using TimerId = std::uint64_t;

    [[nodiscard]] Duration now() const { return mNow; }

    /// Queues a task behind those that are ready.
    void post(Task task, bool onMain = true);

    /// Queues a task that runs after the delay; several of one moment run in the order of their calls.
    TimerId schedule(Duration delay, Task task, bool onMain = true);
    void cancel(TimerId id);

    /// Lets time pass: runs what is ready, then jumps from one due moment to the next, up to and including
    /// the last moment of the duration.
    void advance(Duration duration);

    /// Whether the running task, if any, is one of the main thread.
    [[nodiscard]] bool isOnMain() const { return mIsOnMain; }

    /// How many timers are waiting.
    [[nodiscard]] std::size_t pendingTimers() const { return mScheduled.size(); }

 private:
    struct Entry {
        Task task;
        bool onMain = true;
    };

    void run(const Entry& entry);
    void runReady();

    Duration mNow{};
    std::deque<Entry> mReady;
    // Keyed by moment and number of the call.
    std::map<std::pair<Duration, TimerId>, Entry> mScheduled;
    std::map<TimerId, Duration> mMoments;
    TimerId mNextId = 1;
    bool mIsOnMain = true;
};

}  // namespace merovanta::inmemory
