#pragma once

#include "Platform/ImageOverlay.h"

namespace merovanta::inmemory {

/// Puts pictures into the view tree as views without a colour of their own.
class OverlaysInMemory : public ImageOverlayFactory {
 public:
    [[nodiscard]] std::unique_ptr<ImageOverlay> show(const View& over, PixelBuffer pixels,
                                                     double opacity) override;

    /// The last picture shown.
    PixelBuffer lastPixels;
    double lastOpacity = 0;
};

}  // namespace merovanta::inmemory
