#pragma once

#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include "Platform/Timer.h"

namespace merovanta::qt {

/// Handle of a QTimer that belongs to the timer factory and so dies with the application at the latest.
class TimerQt final : public Timer {
 public:
    explicit TimerQt(QTimer* timer);
    ~TimerQt() override;

 private:
    QPointer<QTimer> mTimer;
};

}  // namespace merovanta::qt
