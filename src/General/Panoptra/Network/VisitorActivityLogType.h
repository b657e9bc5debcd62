#pragma once

#include "General/Panoptra/Network/RawValues.h"

namespace merovanta {

/// What the service's log of a visitor can hold; this library reports the first two and the acceptance.
enum class VisitorActivityLogType {
    COBROWSE_START,
    COBROWSE_STOP,
    COBROWSE_ACCEPT,
    COBROWSE_DECLINE,
    CUSTOM,
};

template <>
struct RawValues<VisitorActivityLogType> {
    static constexpr std::array<std::string_view, 5> values{"cs", "ce", "ca", "cd", "custom"};
};

}  // namespace merovanta
