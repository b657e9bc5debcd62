#pragma once

#include <memory>
#include <utility>

#include "InMemory/VirtualTime.h"
#include "Platform/MainQueue.h"

namespace merovanta::inmemory {

class MainQueueInMemory : public MainQueue {
 public:
    explicit MainQueueInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    void async(std::function<void()> task) override { mTime->post(std::move(task)); }
    [[nodiscard]] bool isCurrent() const override { return mTime->isOnMain(); }

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
