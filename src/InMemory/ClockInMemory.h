#pragma once

#include <memory>
#include <utility>

#include "InMemory/VirtualTime.h"
#include "Platform/Clock.h"

namespace merovanta::inmemory {

/// Shows the virtual time, counted from a moment of the calendar that the owner chooses.
class ClockInMemory : public Clock {
 public:
    explicit ClockInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::chrono::milliseconds sinceEpoch() const override {
        return start + std::chrono::duration_cast<std::chrono::milliseconds>(mTime->now());
    }

    /// The calendar's time at the beginning of the virtual time.
    std::chrono::milliseconds start{1'700'000'000'000};

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
