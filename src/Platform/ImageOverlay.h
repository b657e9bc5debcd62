#pragma once

#include <memory>

#include "Platform/PixelBuffer.h"
#include "Platform/View.h"

namespace merovanta {

/// A picture over the host application; touches pass through it. Destroying it takes it away. Thread: main.
class ImageOverlay {
 public:
    virtual ~ImageOverlay() = default;
};

/// Thread: main.
class ImageOverlayFactory {
 public:
    virtual ~ImageOverlayFactory() = default;

    /// Shows the picture in front of all else in the view, but behind the co-browsing widget and behind what
    /// is presented over the view (alerts, dialogs), stretched to the view's bounds, as a view of class
    /// "PassthroughUIImageView". The pixels are 0xAARRGGBB with the colours multiplied by the alpha. It goes
    /// with the view if that is destroyed. Null if the view is dead.
    [[nodiscard]] virtual std::unique_ptr<ImageOverlay> show(const View& over, PixelBuffer pixels,
                                                             double opacity) = 0;
};

}  // namespace merovanta
