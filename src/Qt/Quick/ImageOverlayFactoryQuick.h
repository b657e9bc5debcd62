#pragma once

#include "Platform/ImageOverlay.h"

namespace merovanta::quick {

class ImageOverlayFactoryQuick final : public ImageOverlayFactory {
 public:
    [[nodiscard]] std::unique_ptr<ImageOverlay> show(const View& over, PixelBuffer pixels,
                                                     double opacity) override;
};

}  // namespace merovanta::quick
