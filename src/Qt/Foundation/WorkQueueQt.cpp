#include "Qt/Foundation/WorkQueueQt.h"

#include <utility>

namespace merovanta::qt {

namespace {

std::unique_ptr<QThreadPool> singleThread() {
    auto pool = std::make_unique<QThreadPool>();
    pool->setMaxThreadCount(1);
    return pool;
}

}  // namespace

WorkQueueQt::WorkQueueQt() : mPool(singleThread()) {
    ApplicationLifeQt::instance().add(*this);
}

WorkQueueQt::~WorkQueueQt() {
    ApplicationLifeQt::instance().remove(*this);
}

void WorkQueueQt::async(std::function<void()> task) {
    const std::scoped_lock lock(mMutex);
    if (mPool) mPool->start(std::move(task));
}

void WorkQueueQt::applicationStarted() {
    const std::scoped_lock lock(mMutex);
    if (!mPool) mPool = singleThread();
}

void WorkQueueQt::applicationEnding() {
    std::unique_ptr<QThreadPool> pool;
    {
        const std::scoped_lock lock(mMutex);
        pool = std::move(mPool);
    }
    pool->clear();
    pool->waitForDone();
}

}  // namespace merovanta::qt
