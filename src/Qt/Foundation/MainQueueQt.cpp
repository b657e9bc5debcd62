#include "Qt/Foundation/MainQueueQt.h"

#include <utility>

namespace merovanta::qt {

MainQueueQt::MainQueueQt() {
    ApplicationLifeQt::instance().add(*this);
}

MainQueueQt::~MainQueueQt() {
    ApplicationLifeQt::instance().remove(*this);
}

void MainQueueQt::async(std::function<void()> task) {
    const std::scoped_lock lock(mMutex);
    if (mReceiver) {
        mReceiver->post(std::move(task));
    } else if (ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::before) {
        mEarlyTasks.push_back(std::move(task));
    }
}

bool MainQueueQt::isCurrent() const {
    return std::this_thread::get_id() == mMainThread;
}

void MainQueueQt::applicationStarted() {
    const std::scoped_lock lock(mMutex);
    mReceiver = std::make_unique<TaskReceiverQt>();
    for (auto& task : std::exchange(mEarlyTasks, {}))
        mReceiver->post(std::move(task));
}

void MainQueueQt::applicationEnding() {
    std::unique_ptr<TaskReceiverQt> receiver;
    {
        const std::scoped_lock lock(mMutex);
        receiver = std::move(mReceiver);
    }
    // Destroyed without the lock: what the dropped tasks own may itself call async().
}

}  // namespace merovanta::qt
