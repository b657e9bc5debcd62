#pragma once

#include "Platform/PixelBuffer.h"

namespace merovanta {

/// Work on pictures. Any thread; nothing is shared.
class ImageUtils {
 public:
    ImageUtils() = delete;

    /// Shrinks to one third in each dimension, rounded up: each pixel becomes the average of its three by
    /// three source pixels, or of those of them that exist at the right and lower edge. The target's memory
    /// is reused.
    static void shrinkToThird(const PixelBuffer& source, PixelBuffer& target);
};

}  // namespace merovanta
