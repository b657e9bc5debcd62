#pragma once

#include <map>
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

    /// How many timers of this kind wait.
    [[nodiscard]] std::size_t pending(Interval interval, bool repeats) const;

    /// How many repeating timers there are, whatever their intervals.
    [[nodiscard]] std::size_t repeating() const;

 private:
    using Counts = std::map<std::pair<Interval, bool>, std::size_t>;

    class TimerInMemory;

    std::shared_ptr<VirtualTime> mTime;
    std::shared_ptr<Counts> mCounts = std::make_shared<Counts>();
};

}  // namespace merovanta::inmemory
