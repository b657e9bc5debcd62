#include "General/Panoptra/SessionObservers.h"

#include <algorithm>
#include <utility>

#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

class SessionObservers::Handle final : public Observation {
 public:
    Handle(std::weak_ptr<SessionObservers> observers, std::shared_ptr<Entry> entry)
        : mObservers(std::move(observers)), mEntry(std::move(entry)) {}

    ~Handle() override {
        if (const auto observers = mObservers.lock()) std::erase(observers->mEntries, mEntry);
    }

 private:
    std::weak_ptr<SessionObservers> mObservers;
    std::shared_ptr<Entry> mEntry;
};

SessionObservers::Scope::Scope(std::shared_ptr<SessionObservers> observers)
    : mObservers(std::move(observers)) {
    ++mObservers->mScopes;
}

SessionObservers::Scope::~Scope() {
    if (--mObservers->mScopes == 0) mObservers->tell();
}

std::unique_ptr<Observation> SessionObservers::add(Observer observer) {
    assertMainThread();
    auto entry = std::make_shared<Entry>(Entry{.observer = std::move(observer), .knows = mNumber});
    mEntries.push_back(entry);
    return std::make_unique<Handle>(weak_from_this(), std::move(entry));
}

void SessionObservers::changed(const SessionStatus& status, std::function<void()> afterwards) {
    assertMainThread();
    mStatus = status;
    mUntold.push_back({.status = status, .number = ++mNumber, .afterwards = std::move(afterwards)});
    if (mScopes > 0) return;
    ViewUtils::runOnMainQueue([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (self && self->mScopes == 0) self->tell();
    });
}

void SessionObservers::tell() {
    if (mIsTelling) return;
    mIsTelling = true;
    while (!mUntold.empty()) {
        const Change change = std::move(mUntold.front());
        mUntold.pop_front();
        tell(change);
    }
    mIsTelling = false;
}

void SessionObservers::tell(const Change& change) {
    // A copy: observers come and go inside the calls.
    const auto entries = mEntries;
    for (const auto& entry : entries) {
        const bool isThere = std::find(mEntries.begin(), mEntries.end(), entry) != mEntries.end();
        if (isThere && entry->knows < change.number && entry->observer) entry->observer(change.status);
    }
    if (change.afterwards) change.afterwards();
}

}  // namespace merovanta
