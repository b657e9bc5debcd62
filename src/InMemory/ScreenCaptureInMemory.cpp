#include "InMemory/ScreenCaptureInMemory.h"

#include <algorithm>
#include <cmath>

#include "InMemory/MaskWalkInMemory.h"
#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

std::size_t pixel(double points, double scale, std::size_t limit) {
    return static_cast<std::size_t>(std::clamp(std::round(points * scale), 0.0, static_cast<double>(limit)));
}

/// A view's place in the picture, in points, and the part of the picture where it shows.
struct Place {
    Point origin;
    Rect shown;
};

void draw(const NativeView& view, const Place& place, double scale, PixelBuffer& pixels) {
    const Rect area =
        intersection({place.origin.x, place.origin.y, view.frame.width, view.frame.height}, place.shown);
    const std::size_t left = pixel(area.x, scale, pixels.width());
    const std::size_t right = pixel(area.x + area.width, scale, pixels.width());
    const std::size_t bottom = pixel(area.y + area.height, scale, pixels.height());
    for (std::size_t y = pixel(area.y, scale, pixels.height()); left < right && y < bottom; ++y) {
        std::fill(pixels.row(y) + left, pixels.row(y) + right, view.color);
    }
    for (const auto& subview : view.subviews) {
        draw(*subview,
             {{place.origin.x + subview->frame.x, place.origin.y + subview->frame.y},
              view.clips ? area : place.shown},
             scale, pixels);
    }
}

/// Whether the view is the window's root view or in it.
bool isShown(std::shared_ptr<NativeView> view, const ApplicationInMemory& application) {
    if (!application.root) return false;
    while (view && view != application.root->view)
        view = view->superview.lock();
    return view != nullptr;
}

}  // namespace

std::uint64_t ScreenCaptureInMemory::paintSerial(const View& /*root*/) {
    return mApplication.paintSerial;
}

void ScreenCaptureInMemory::capture(std::shared_ptr<View> root, PixelBuffer buffer,
                                    std::shared_ptr<MaskJudge> judge, Completion completion) {
    ++captures;
    std::optional<CapturedFrame> frame;
    const auto view = dynamic_cast<const ViewInMemory&>(*root).native();
    if (!isFailing && isShown(view, mApplication)) {
        const double scale = mApplication.screen.scale;
        buffer.resize(static_cast<std::size_t>(std::lround(view->frame.width * scale)),
                      static_cast<std::size_t>(std::lround(view->frame.height * scale)));
        draw(*view, {{}, {0, 0, view->frame.width, view->frame.height}}, scale, buffer);
        frame = CapturedFrame{.pixels = std::move(buffer),
                              .masks = findMasks(view, scale, *judge),
                              .scale = scale,
                              .paintSerial = mApplication.paintSerial};
    }
    mTime->schedule(delay, [completion = std::move(completion), frame = std::move(frame)]() mutable {
        completion(std::move(frame));
    });
}

}  // namespace merovanta::inmemory
