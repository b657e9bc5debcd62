#include "Qt/Foundation/ClockQt.h"

#include <QtCore/QDateTime>

namespace merovanta::qt {

std::chrono::milliseconds ClockQt::sinceEpoch() const {
    return std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch());
}

}  // namespace merovanta::qt
