#pragma once

#include <cassert>

#include "Platform/Platform.h"

namespace merovanta {

/// Says in debug builds when state is touched off the thread that owns it.
inline void assertMainThread() {
    assert(platform::current().mainQueue().isCurrent());
}

}  // namespace merovanta
