#include "Qt/Foundation/ClockQt.h"

#include <QtCore/QDateTime>
#include <ctime>

namespace merovanta::qt {

namespace {

/// Time that no setting of a clock changes, and that a suspended machine does not stop if the system can
/// tell.
std::chrono::milliseconds passedTime() {
#ifdef CLOCK_BOOTTIME
    timespec now{};
    if (clock_gettime(CLOCK_BOOTTIME, &now) == 0) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::seconds(now.tv_sec) +
                                                                     std::chrono::nanoseconds(now.tv_nsec));
    }
#endif
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

std::chrono::milliseconds ClockQt::sinceEpoch() {
    return mTime.advance(std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch()), passedTime());
}

}  // namespace merovanta::qt
