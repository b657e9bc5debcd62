#pragma once

#include <QtCore/QObject>
#include <functional>
#include <memory>

#include "Platform/Timer.h"
#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

/// Timers of the application's event loop, exact to the millisecond. Those scheduled before there is an
/// application begin with it.
class TimerFactoryQt final : public TimerFactory, private ApplicationLifeQt::Observer {
 public:
    TimerFactoryQt();
    ~TimerFactoryQt() override;

    [[nodiscard]] std::unique_ptr<Timer> schedule(Interval interval, bool repeats,
                                                  std::function<void()> action) override;

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    /// Parent of all timers.
    std::unique_ptr<QObject> mOwner = std::make_unique<QObject>();
};

}  // namespace merovanta::qt
