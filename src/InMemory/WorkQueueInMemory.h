#pragma once

#include <memory>
#include <utility>

#include "InMemory/VirtualTime.h"
#include "Platform/WorkQueue.h"

namespace merovanta::inmemory {

/// Takes its turns between those of the main thread.
class WorkQueueInMemory : public WorkQueue {
 public:
    explicit WorkQueueInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    void async(std::function<void()> task) override { mTime->post(std::move(task), /*onMain=*/false); }

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
