#include <Merovanta/MerovantaLog.h>

#include <utility>

#include "General/LogDestination.h"

namespace merovanta {

// Not static, as a call on the one instance, like those of the other facades.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
void MerovantaLog::setSink(Sink sink, StandardOutput standardOutput) {
    LogDestination::set(std::move(sink), standardOutput);
}

}  // namespace merovanta
