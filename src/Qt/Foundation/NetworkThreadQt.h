#pragma once

#include <QtCore/QThread>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "Qt/Foundation/ApplicationLifeQt.h"

class QObject;

namespace merovanta::qt {

class TaskReceiverQt;

/// The thread of requests and sockets, which spares the host's own thread their work. It starts with the
/// first task and ends with the application.
class NetworkThreadQt final : private ApplicationLifeQt::Observer {
 public:
    /// What a task makes belongs to the owner, which the thread destroys at its end.
    using Task = std::function<void(QObject& owner)>;

    NetworkThreadQt();
    ~NetworkThreadQt();

    /// Runs the task in the thread, after those posted before. A task posted before there is an application
    /// waits for it; one posted after its end is dropped. Any thread.
    void post(Task task);

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    /// Needs the lock, and an owner.
    void run(Task task);

    std::mutex mMutex;
    std::unique_ptr<QThread> mThread;
    /// Lives in the thread; null while there is no application.
    TaskReceiverQt* mOwner = nullptr;
    std::vector<Task> mEarlyTasks;
};

}  // namespace merovanta::qt
