#pragma once

#include "General/Panoptra/Network/RawValues.h"

namespace merovanta {

enum class VisitorActivityLogCategory { COBROWSE, CUSTOM };

template <>
struct RawValues<VisitorActivityLogCategory> {
    static constexpr std::array<std::string_view, 2> values{"c", "custom"};
};

}  // namespace merovanta
