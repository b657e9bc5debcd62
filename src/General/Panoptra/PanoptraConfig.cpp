#include "General/Panoptra/PanoptraConfig.h"

#include <chrono>

#include "General/Panoptra/Util/IdUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

void PanoptraConfig::resetSession() {
    // What was the time before matters to the sessions before; this one begins with the system's.
    platform::current().clock().restart();
    // Truncated to whole seconds before it becomes milliseconds, like every time stamp on the wire.
    const auto now =
        std::chrono::duration_cast<std::chrono::seconds>(platform::current().clock().sinceEpoch());
    startTime = std::chrono::milliseconds(now).count();
    shareId = IdUtils::newShareCode();
}

}  // namespace merovanta
