#include "Qt/Foundation/TimerFactoryQt.h"

#include <QtCore/QTimer>
#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

#include "Qt/Foundation/TimerQt.h"

namespace merovanta::qt {

namespace {

int wholeMilliseconds(TimerFactory::Interval interval) {
    const auto count = std::chrono::ceil<std::chrono::milliseconds>(interval).count();
    return static_cast<int>(std::clamp<decltype(count)>(count, 0, std::numeric_limits<int>::max()));
}

}  // namespace

TimerFactoryQt::TimerFactoryQt() {
    ApplicationLifeQt::instance().add(*this);
}

TimerFactoryQt::~TimerFactoryQt() {
    ApplicationLifeQt::instance().remove(*this);
}

std::unique_ptr<Timer> TimerFactoryQt::schedule(Interval interval, bool repeats,
                                                std::function<void()> action) {
    if (!mOwner) return std::make_unique<TimerQt>(nullptr);
    auto* const timer = new QTimer(mOwner.get());
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(!repeats);
    timer->setInterval(wholeMilliseconds(interval));
    // The connection keeps the action while it runs, also when it destroys its own timer.
    QObject::connect(timer, &QTimer::timeout, timer, std::move(action));
    if (ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::running) timer->start();
    return std::make_unique<TimerQt>(timer);
}

void TimerFactoryQt::applicationStarted() {
    if (!mOwner) mOwner = std::make_unique<QObject>();
    const auto early = mOwner->findChildren<QTimer*>(Qt::FindDirectChildrenOnly);
    for (QTimer* timer : early)
        timer->start();
}

void TimerFactoryQt::applicationEnding() {
    mOwner.reset();
}

}  // namespace merovanta::qt
