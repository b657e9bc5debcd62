#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Platform/PixelBuffer.h"

namespace merovanta {

/// Unpacks PNG pictures from outside. Any thread; nothing is shared.
class PngDecoder {
 public:
    /// A picture of more pixels is refused: no screen has them.
    static constexpr std::size_t maximumPixels = 10'000'000;

    PngDecoder() = delete;

    /// How many pixels the picture says it has, without unpacking anything of it; absent if it is no PNG,
    /// empty or refused.
    [[nodiscard]] static std::optional<std::size_t> pixelCount(const std::string& png);

    /// The pixels as 0xAARRGGBB with the colours multiplied by the alpha; absent if it cannot be unpacked.
    [[nodiscard]] static std::optional<PixelBuffer> decode(const std::string& png);
};

}  // namespace merovanta
