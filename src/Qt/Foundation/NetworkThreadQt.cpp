#include "Qt/Foundation/NetworkThreadQt.h"

#include <utility>

#include "Qt/Foundation/TaskReceiverQt.h"

namespace merovanta::qt {

NetworkThreadQt::NetworkThreadQt() {
    ApplicationLifeQt::instance().add(*this);
}

NetworkThreadQt::~NetworkThreadQt() {
    ApplicationLifeQt::instance().remove(*this);
    if (mThread) NetworkThreadQt::applicationEnding();
}

void NetworkThreadQt::post(Task task) {
    const std::scoped_lock lock(mMutex);
    if (mOwner != nullptr) {
        run(std::move(task));
    } else if (ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::before) {
        mEarlyTasks.push_back(std::move(task));
    }
}

void NetworkThreadQt::run(Task task) {
    if (!mThread->isRunning()) mThread->start();
    mOwner->post([owner = mOwner, task = std::move(task)] { task(*owner); });
}

void NetworkThreadQt::applicationStarted() {
    const std::scoped_lock lock(mMutex);
    mThread = std::make_unique<QThread>();
    mThread->setObjectName(QStringLiteral("Merovanta network"));
    mOwner = new TaskReceiverQt();
    mOwner->moveToThread(mThread.get());
    QObject::connect(mThread.get(), &QThread::finished, mOwner, &QObject::deleteLater);
    for (auto& task : std::exchange(mEarlyTasks, {}))
        run(std::move(task));
}

void NetworkThreadQt::applicationEnding() {
    std::unique_ptr<QThread> thread;
    TaskReceiverQt* owner = nullptr;
    {
        const std::scoped_lock lock(mMutex);
        thread = std::move(mThread);
        owner = std::exchange(mOwner, nullptr);
    }
    if (!thread->isRunning()) {
        delete owner;
        return;
    }
    thread->quit();
    thread->wait();
}

}  // namespace merovanta::qt
