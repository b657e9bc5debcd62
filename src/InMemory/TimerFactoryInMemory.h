#pragma once

#include <memory>
#include <utility>

#include "InMemory/VirtualTime.h"
#include "Platform/Timer.h"

namespace merovanta::inmemory {

class TimerFactoryInMemory : public TimerFactory {
 public:
    explicit TimerFactoryInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::unique_ptr<Timer> schedule(Interval interval, bool repeats,
                                                  std::function<void()> action) override;

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
