#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QThreadPool>
#include <functional>
#include <memory>
#include <mutex>

#include "Platform/WorkQueue.h"
#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

/// One worker thread, started when there is work.
class MEROVANTA_INTERNAL WorkQueueQt final : public WorkQueue, private ApplicationLifeQt::Observer {
 public:
    WorkQueueQt();
    ~WorkQueueQt() override;

    void async(std::function<void()> task) override;

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    std::mutex mMutex;
    /// Null when the application has ended.
    std::unique_ptr<QThreadPool> mPool;
};

}  // namespace merovanta::qt
