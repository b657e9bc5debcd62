#include "Qt/Foundation/TimerQt.h"

namespace merovanta::qt {

TimerQt::TimerQt(QTimer* timer) : mTimer(timer) {}

TimerQt::~TimerQt() {
    if (!mTimer) return;
    mTimer->stop();
    // Cuts off a time-out that is on its way; the object itself may be busy delivering this very one.
    mTimer->disconnect();
    mTimer->deleteLater();
}

}  // namespace merovanta::qt
