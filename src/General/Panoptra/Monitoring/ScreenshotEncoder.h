#pragma once

#include <optional>
#include <string>

#include "General/Panoptra/Monitoring/JpegEncoder.h"
#include "General/Panoptra/Monitoring/MaskedFrame.h"
#include "Platform/PixelBuffer.h"

namespace merovanta {

/// Turns masked frames into small JPEG pictures. Lives on the work queue: one thread at a time.
class ScreenshotEncoder {
 public:
    /// The frame at one third of its size, as JPEG. Absent if it came out the same, pixel by pixel, as the
    /// last frame that was encoded (its JPEG would be the same too), or if it cannot be encoded.
    [[nodiscard]] std::optional<std::string> encode(const MaskedFrame& frame);

    /// Encodes the next frame even if nothing changed.
    void reset();

 private:
    static constexpr double jpegQuality = 0.4;

    JpegEncoder mJpegEncoder;
    PixelBuffer mSmall;
    PixelBuffer mLastSmall;
};

}  // namespace merovanta
