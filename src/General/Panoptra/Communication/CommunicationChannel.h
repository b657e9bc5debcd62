#pragma once

#include "General/Panoptra/Network/RawValues.h"

namespace merovanta {

/// The channels on which the service and its clients exchange short messages. This library speaks on S, the
/// visitor's presence, and SCB, the agent's request to co-browse; the others it only carries.
enum class CommunicationChannel { CF, C, V, VCB, SCB, S, WC, CO, COQS, NO, JS };

template <>
struct RawValues<CommunicationChannel> {
    static constexpr std::array<std::string_view, 11> values{"CF", "C",  "V",    "VCB", "SCB", "S",
                                                             "WC", "CO", "COQS", "NO",  "JS"};
};

}  // namespace merovanta
