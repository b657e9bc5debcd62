#include "Qt/Foundation/HttpSessionQt.h"

#include <QtCore/QMetaObject>
#include <utility>

#include "Qt/Foundation/HttpWorkerQt.h"

namespace merovanta::qt {

HttpSessionQt::HttpSessionQt() {
    ApplicationLifeQt::instance().add(*this);
}

HttpSessionQt::~HttpSessionQt() {
    ApplicationLifeQt::instance().remove(*this);
    if (mThread) applicationEnding();
}

void HttpSessionQt::execute(HttpRequest request, Completion completion) {
    const std::scoped_lock lock(mMutex);
    if (mWorker) {
        post(std::move(request), std::move(completion));
    } else if (ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::before) {
        mEarly.emplace_back([this, request = std::move(request), completion = std::move(completion)] {
            post(request, completion);
        });
    }
}

void HttpSessionQt::post(HttpRequest request, Completion completion) {
    if (!mThread->isRunning()) mThread->start();
    QMetaObject::invokeMethod(
        mWorker,
        [worker = mWorker, request = std::move(request), completion = std::move(completion)] {
            worker->execute(request, completion);
        },
        Qt::QueuedConnection);
}

void HttpSessionQt::applicationStarted() {
    const std::scoped_lock lock(mMutex);
    mThread = std::make_unique<QThread>();
    mThread->setObjectName(QStringLiteral("Merovanta HTTP"));
    mWorker = new HttpWorkerQt();
    mWorker->moveToThread(mThread.get());
    QObject::connect(mThread.get(), &QThread::finished, mWorker, &QObject::deleteLater);
    for (const auto& request : std::exchange(mEarly, {}))
        request();
}

void HttpSessionQt::applicationEnding() {
    std::unique_ptr<QThread> thread;
    HttpWorkerQt* worker = nullptr;
    {
        const std::scoped_lock lock(mMutex);
        thread = std::move(mThread);
        worker = std::exchange(mWorker, nullptr);
    }
    if (!thread->isRunning()) {
        delete worker;
        return;
    }
    worker->stop();
    thread->quit();
    thread->wait();
}

}  // namespace merovanta::qt
