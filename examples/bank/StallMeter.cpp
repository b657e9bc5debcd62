#include "StallMeter.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

StallMeter::StallMeter() {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &StallMeter::beat);
    m_sinceBeat.start();
    m_timer.start(2ms);
}

std::chrono::milliseconds StallMeter::takeLongest() {
    // The stall may be the one that has just ended, before its beat.
    beat();
    return std::chrono::milliseconds(std::exchange(m_longestMs, 0));
}

void StallMeter::beat() {
    m_longestMs = std::max(m_longestMs, m_sinceBeat.restart());
}
