#pragma once

#include "General/Panoptra/Network/RawValues.h"

namespace merovanta {

/// What a visitor who is there can take part in; this library offers the first.
enum class Type { CONFERENCE, WEBRTC };

template <>
struct RawValues<Type> {
    static constexpr std::array<std::string_view, 2> values{"CONFERENCE", "WEBRTC"};
};

}  // namespace merovanta
