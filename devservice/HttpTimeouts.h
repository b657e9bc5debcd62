#pragma once

#include <chrono>

namespace merovanta::devservice {

/// How long a client may take before its connection is closed.
struct HttpTimeouts {
    std::chrono::milliseconds head{60'000};  ///< from the last reply to the end of the next head
    std::chrono::milliseconds body{20'000};
    std::chrono::milliseconds reply{20'000};
    std::chrono::milliseconds linger{2'000};
};

}  // namespace merovanta::devservice
