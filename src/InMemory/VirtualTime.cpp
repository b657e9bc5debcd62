#include "InMemory/VirtualTime.h"

#include <utility>

namespace merovanta::inmemory {

void VirtualTime::post(Task task, bool onMain) {
    mReady.push_back({std::move(task), onMain});
}

VirtualTime::TimerId VirtualTime::schedule(Duration delay, Task task, bool onMain) {
    const TimerId id = mNextId++;
    const Duration moment = mNow + delay;
    mScheduled[{moment, id}] = {std::move(task), onMain};
    mMoments[id] = moment;
    return id;
}

void VirtualTime::cancel(TimerId id) {
    const auto moment = mMoments.find(id);
    if (moment == mMoments.end()) return;
    mScheduled.erase({moment->second, id});
    mMoments.erase(moment);
}

void VirtualTime::advance(Duration duration) {
    const Duration target = mNow + duration;
    runReady();
    while (!mScheduled.empty() && mScheduled.begin()->first.first <= target) {
        auto first = mScheduled.extract(mScheduled.begin());
        mNow = first.key().first;
        mMoments.erase(first.key().second);
        run(first.mapped());
        runReady();
    }
    mNow = target;
}

void VirtualTime::run(const Entry& entry) {
    const bool wasOnMain = std::exchange(mIsOnMain, entry.onMain);
    entry.task();
    mIsOnMain = wasOnMain;
}

void VirtualTime::runReady() {
    while (!mReady.empty()) {
        const Entry entry = std::move(mReady.front());
        mReady.pop_front();
        run(entry);
    }
}

}  // namespace merovanta::inmemory
