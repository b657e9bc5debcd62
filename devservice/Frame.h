#pragma once

#include <cstdint>
#include <string>

#include "JpegHeader.h"
#include "Moment.h"

namespace merovanta::devservice {

/// One picture of a visitor's screen. Shared, immutable: a console may still be sending it when the next one
/// arrives.
struct Frame {
    std::uint64_t number = 0;
    /// When it arrived.
    Moment at{};
    PictureSize size;
    std::string jpeg;
};

}  // namespace merovanta::devservice
