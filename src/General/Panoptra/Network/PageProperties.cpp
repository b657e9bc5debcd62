#include "General/Panoptra/Network/PageProperties.h"

#include "General/Fatal.h"

namespace merovanta {

namespace {

std::int64_t truncated(double length) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    // Written so that a NaN fails it.
    if (!(length >= -limit && length < limit)) fatalError("The screen's bounds are no 64-bit number");
    return static_cast<std::int64_t>(length);
}

}  // namespace

PageProperties PageProperties::of(const Rect& bounds) {
    return {.width = truncated(bounds.width), .height = truncated(bounds.height)};
}

nlohmann::ordered_json PageProperties::toJson() const {
    return {{"width", width}, {"height", height}, {"docHeight", docHeight}, {"docWidth", docWidth}};
}

}  // namespace merovanta
