#include "InMemory/TimerFactoryInMemory.h"

namespace merovanta::inmemory {

namespace {

class TimerInMemory : public Timer {
 public:
    TimerInMemory(std::shared_ptr<VirtualTime> time, TimerFactory::Interval interval, bool repeats,
                  std::function<void()> action)
        : mTime(std::move(time)),
          mState(std::make_shared<State>(State{interval, repeats, std::move(action)})) {
        scheduleNext(*mTime, mState);
    }

    ~TimerInMemory() override { mTime->cancel(mState->id); }

 private:
    // Outlives the handle for as long as the action runs that destroys it.
    struct State {
        TimerFactory::Interval interval;
        bool repeats;
        std::function<void()> action;
        VirtualTime::TimerId id = 0;
    };

    static void scheduleNext(VirtualTime& time, const std::shared_ptr<State>& state) {
        state->id = time.schedule(state->interval, [weak = time.weak_from_this(), state] {
            const auto locked = weak.lock();
            if (locked && state->repeats) scheduleNext(*locked, state);
            state->action();
        });
    }

    std::shared_ptr<VirtualTime> mTime;
    std::shared_ptr<State> mState;
};

}  // namespace

std::unique_ptr<Timer> TimerFactoryInMemory::schedule(Interval interval, bool repeats,
                                                      std::function<void()> action) {
    return std::make_unique<TimerInMemory>(mTime, interval, repeats, std::move(action));
}

}  // namespace merovanta::inmemory
