#pragma once

#include "General/Panoptra/Network/RawValues.h"

namespace merovanta {

/// On what the visitor is; this library is always the first.
enum class DeviceType { MOBILE, WEB };

template <>
struct RawValues<DeviceType> {
    static constexpr std::array<std::string_view, 2> values{"MOBILE", "WEB"};
};

}  // namespace merovanta
