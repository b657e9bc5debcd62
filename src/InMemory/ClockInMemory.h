#pragma once

#include <memory>
#include <utility>

#include "InMemory/VirtualTime.h"
#include "Platform/Clock.h"
#include "Platform/ForwardTime.h"

namespace merovanta::inmemory {

/// Shows the virtual time, counted from a moment of the calendar that the owner chooses.
class ClockInMemory : public Clock {
 public:
    explicit ClockInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::chrono::milliseconds sinceEpoch() override {
        const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(mTime->now());
        return mForward.advance(start + passed, passed);
    }
    void restart() override { mForward.restart(); }

    /// What the calendar showed at the beginning of the virtual time; a change sets the system's clock.
    std::chrono::milliseconds start{1'700'000'000'000};

 private:
    std::shared_ptr<VirtualTime> mTime;
    ForwardTime mForward;
};

}  // namespace merovanta::inmemory
