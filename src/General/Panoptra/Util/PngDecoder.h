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
    static constexpr std::size_t maximumPixels = std::size_t{7680} * 4320;

    struct Size {
        std::size_t width = 0;
        std::size_t height = 0;
        [[nodiscard]] std::size_t pixelCount() const { return width * height; }
    };

    PngDecoder() = delete;

    /// The size that the picture says it has, without unpacking anything of it; absent if it is no PNG, empty
    /// or refused.
    [[nodiscard]] static std::optional<Size> size(const std::string& png);

    /// The pixels as 0xAARRGGBB with the colours multiplied by the alpha; absent if it cannot be unpacked.
    [[nodiscard]] static std::optional<PixelBuffer> decode(const std::string& png);
};

}  // namespace merovanta
