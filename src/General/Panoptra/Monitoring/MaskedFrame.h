#pragma once

#include <utility>

#include "Platform/ScreenCapture.h"

namespace merovanta {

/// A picture whose private areas are black: the only kind of picture that is ever encoded.
class MaskedFrame {
 public:
    /// Blacks out the frame's own private areas.
    explicit MaskedFrame(CapturedFrame frame);

    [[nodiscard]] const PixelBuffer& pixels() const { return mPixels; }

    /// Gives the memory back for the next capture.
    [[nodiscard]] PixelBuffer takeBuffer() && { return std::move(mPixels); }

 private:
    PixelBuffer mPixels;
};

}  // namespace merovanta
