#include "Qt/Foundation/MainQueueQt.h"

#include <QtCore/QMetaObject>
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
        QMetaObject::invokeMethod(mReceiver.get(), std::move(task), Qt::QueuedConnection);
    } else if (ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::before) {
        mEarlyTasks.push_back(std::move(task));
    }
}

bool MainQueueQt::isCurrent() const {
    return std::this_thread::get_id() == mMainThread;
}

void MainQueueQt::applicationStarted() {
    const std::scoped_lock lock(mMutex);
    mReceiver = std::make_unique<QObject>();
    for (auto& task : std::exchange(mEarlyTasks, {})) {
        QMetaObject::invokeMethod(mReceiver.get(), std::move(task), Qt::QueuedConnection);
    }
}

void MainQueueQt::applicationEnding() {
    std::unique_ptr<QObject> receiver;
    {
        const std::scoped_lock lock(mMutex);
        receiver = std::move(mReceiver);
    }
    // Destroyed without the lock: what the dropped tasks own may itself call async().
}

}  // namespace merovanta::qt
