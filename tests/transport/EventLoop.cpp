#include "EventLoop.h"

#include <fcntl.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace merovanta::test {

using Clock = std::chrono::steady_clock;

EventLoop::EventLoop() : mSchedule(open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC)) {
    mHeartbeat.setTimerType(Qt::PreciseTimer);
    mHeartbeat.start(std::chrono::milliseconds(1));
}

EventLoop::~EventLoop() {
    close(mSchedule);
}

bool EventLoop::runUntil(const std::function<bool()>& condition, Duration limit) {
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

void EventLoop::runFor(Duration duration) {
    runUntil([end = Clock::now() + duration] { return Clock::now() >= end; });
}

EventLoop::Duration EventLoop::takeLongestTurn() {
    return std::exchange(mLongestTurn, {});
}

EventLoop::Duration EventLoop::preempted() const {
    // Nanoseconds on a processor, then those spent waiting for one.
    char text[64] = {};
    if (pread(mSchedule, text, sizeof text - 1, 0) <= 0) return {};
    char* second = nullptr;
    std::strtoll(text, &second, 10);
    return std::chrono::nanoseconds(std::strtoll(second, nullptr, 10));
}

}  // namespace merovanta::test
