#pragma once

#include <vector>

#include "VisitorObserver.h"

namespace merovanta::devservice {

/// Passes what happens to the visitors on to several observers, in the order in which they came.
class VisitorAudience : public VisitorObserver {
 public:
    /// The observer must outlive the audience.
    void add(VisitorObserver& observer) { observers_.push_back(&observer); }

    void visitorChanged(const Visitor& visitor) override {
        for (VisitorObserver* observer : observers_)
            observer->visitorChanged(visitor);
    }
    void frameArrived(const Visitor& visitor) override {
        for (VisitorObserver* observer : observers_)
            observer->frameArrived(visitor);
    }
    void visitorRemoved(const Visitor& visitor) override {
        for (VisitorObserver* observer : observers_)
            observer->visitorRemoved(visitor);
    }

 private:
    std::vector<VisitorObserver*> observers_;
};

}  // namespace merovanta::devservice
