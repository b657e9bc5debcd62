#pragma once

#include <Merovanta/Export.h>
#include <Merovanta/MerovantaLog.h>

namespace merovanta::qt {

/// Hands the library's log to Qt's, as the sink of Merovanta::log(): a line comes in the category
/// "merovanta." and its source, for example "merovanta.Panoptra", so that the usual rules switch it
/// ("merovanta.*=false", "merovanta.*.debug=false"). Any thread.
MEROVANTA_EXPORT void logToCategories(
    MerovantaLog::StandardOutput standardOutput = MerovantaLog::StandardOutput::isSilent);

}  // namespace merovanta::qt
