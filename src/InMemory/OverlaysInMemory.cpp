#include "InMemory/OverlaysInMemory.h"

#include <utility>

#include "InMemory/SubviewInMemory.h"
#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

class OverlayInMemory : public ImageOverlay {
 public:
    explicit OverlayInMemory(std::shared_ptr<NativeView> over)
        : mSubview(over,
                   NativeView::make({0, 0, over->frame.width, over->frame.height}, over->color,
                                    {"PassthroughUIImageView"}),
                   {"DefaultUIView"}) {}

 private:
    SubviewInMemory mSubview;
};

}  // namespace

std::unique_ptr<ImageOverlay> OverlaysInMemory::show(const View& over, PixelBuffer pixels, double opacity) {
    auto view = dynamic_cast<const ViewInMemory&>(over).native();
    if (!view) return nullptr;
    lastPixels = std::move(pixels);
    lastOpacity = opacity;
    return std::make_unique<OverlayInMemory>(std::move(view));
}

}  // namespace merovanta::inmemory
