#include "InMemory/TimerFactoryInMemory.h"

namespace merovanta::inmemory {

class TimerFactoryInMemory::TimerInMemory : public Timer {
 public:
    TimerInMemory(std::shared_ptr<VirtualTime> time, std::shared_ptr<Counts> counts, Interval interval,
                  bool repeats, std::function<void()> action)
        : mTime(std::move(time)),
          mState(std::make_shared<State>(State{std::move(counts), interval, repeats, std::move(action)})) {
        scheduleNext(*mTime, mState);
    }

    ~TimerInMemory() override {
        mTime->cancel(mState->id);
        mState->setPending(false);
    }

 private:
    // Outlives the handle for as long as the action runs that destroys it.
    struct State {
        std::shared_ptr<Counts> counts;
        Interval interval;
        bool repeats;
        std::function<void()> action;
        VirtualTime::TimerId id = 0;
        bool isPending = false;

        void setPending(bool pending) {
            if (pending == isPending) return;
            isPending = pending;
            const auto count = counts->try_emplace({interval, repeats}).first;
            pending ? ++count->second : --count->second;
            if (count->second == 0) counts->erase(count);
        }
    };

    static void scheduleNext(VirtualTime& time, const std::shared_ptr<State>& state) {
        state->setPending(true);
        state->id = time.schedule(state->interval, [weak = time.weak_from_this(), state] {
            const auto locked = weak.lock();
            state->setPending(false);
            if (locked && state->repeats) scheduleNext(*locked, state);
            state->action();
        });
    }

    std::shared_ptr<VirtualTime> mTime;
    std::shared_ptr<State> mState;
};

std::unique_ptr<Timer> TimerFactoryInMemory::schedule(Interval interval, bool repeats,
                                                      std::function<void()> action) {
    return std::make_unique<TimerInMemory>(mTime, mCounts, interval, repeats, std::move(action));
}

std::size_t TimerFactoryInMemory::pending(Interval interval, bool repeats) const {
    const auto count = mCounts->find({interval, repeats});
    return count == mCounts->end() ? 0 : count->second;
}

std::size_t TimerFactoryInMemory::repeating() const {
    std::size_t sum = 0;
    for (const auto& [kind, count] : *mCounts)
        sum += kind.second ? count : 0;
    return sum;
}

}  // namespace merovanta::inmemory
