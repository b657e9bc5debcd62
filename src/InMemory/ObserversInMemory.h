#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

#include "Platform/Application.h"

namespace merovanta::inmemory {

/// The observers of one kind of notification.
class ObserversInMemory {
 public:
    [[nodiscard]] std::unique_ptr<Observation> add(std::function<void()> observer) {
        auto entry = std::make_shared<std::function<void()>>(std::move(observer));
        mObservers.push_back(entry);
        mObservers.remove_if([](const auto& other) { return other.expired(); });
        return std::make_unique<Handle>(std::move(entry));
    }

    /// Calls those that are installed now.
    void notify() {
        for (const auto& observer : std::list(mObservers)) {
            if (const auto alive = observer.lock()) (*alive)();
        }
    }

 private:
    class Handle : public Observation {
     public:
        explicit Handle(std::shared_ptr<std::function<void()>> observer) : mObserver(std::move(observer)) {}

     private:
        std::shared_ptr<std::function<void()>> mObserver;
    };

    std::list<std::weak_ptr<std::function<void()>>> mObservers;
};

}  // namespace merovanta::inmemory
