#include "support/MemoryMeter.h"

#include <malloc.h>

namespace merovanta::testing {

std::int64_t bytesInUse() {
    const auto info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

}  // namespace merovanta::testing
