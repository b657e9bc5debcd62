#include "Qt/Foundation/ClockQt.h"

#include <QtCore/QDateTime>

namespace merovanta::qt {

std::chrono::milliseconds ClockQt::sinceEpoch() const {
    using Steady = std::chrono::steady_clock;
    static const Steady::time_point begin = Steady::now();
    static const std::chrono::milliseconds calendarAtBegin(QDateTime::currentMSecsSinceEpoch());
    return calendarAtBegin + std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - begin);
}

}  // namespace merovanta::qt
