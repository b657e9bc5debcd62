#pragma once

#include <chrono>

namespace merovanta::devservice {

/// A point of wall-clock time. Passed in by the caller, so that what depends on time can be tested without
/// waiting.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

inline Moment currentMoment() {
    return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}  // namespace merovanta::devservice
