#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/MainQueue.h"
#include "Qt/Foundation/ApplicationLifeQt.h"
#include "Qt/Foundation/TaskReceiverQt.h"

namespace merovanta::qt {

/// The main queue on the application's event loop. Tasks queued before there is an application wait for it.
class MainQueueQt final : public MainQueue, private ApplicationLifeQt::Observer {
 public:
    /// Thread: main.
    MainQueueQt();
    ~MainQueueQt() override;

    void async(std::function<void()> task) override;
    [[nodiscard]] bool isCurrent() const override;

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    const std::thread::id mMainThread = std::this_thread::get_id();
    std::mutex mMutex;
    /// Null while there is no application.
    std::unique_ptr<TaskReceiverQt> mReceiver;
    std::vector<std::function<void()>> mEarlyTasks;
};

}  // namespace merovanta::qt
