#include "InMemory/ScreenCaptureInMemory.h"

#include <algorithm>
#include <cmath>

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

std::size_t pixel(double points, double scale, std::size_t limit) {
    return static_cast<std::size_t>(std::clamp(std::round(points * scale), 0.0, static_cast<double>(limit)));
}

void draw(const NativeView& view, const Point& origin, double scale, PixelBuffer& pixels) {
    const std::size_t left = pixel(origin.x, scale, pixels.width());
    const std::size_t right = pixel(origin.x + view.frame.width, scale, pixels.width());
    const std::size_t bottom = pixel(origin.y + view.frame.height, scale, pixels.height());
    for (std::size_t y = pixel(origin.y, scale, pixels.height()); y < bottom; ++y) {
        std::fill(pixels.row(y) + left, pixels.row(y) + right, view.color);
    }
    for (const auto& subview : view.subviews) {
        draw(*subview, {origin.x + subview->frame.x, origin.y + subview->frame.y}, scale, pixels);
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

void ScreenCaptureInMemory::capture(std::shared_ptr<View> root, PixelBuffer buffer, MaskProvider masks,
                                    Completion completion) {
    ++captures;
    std::optional<CapturedFrame> frame;
    const auto view = dynamic_cast<const ViewInMemory&>(*root).native();
    auto areas = isShown(view, mApplication) ? masks() : std::nullopt;
    if (areas) {
        const double scale = mApplication.screen.scale;
        buffer.resize(static_cast<std::size_t>(std::lround(view->frame.width * scale)),
                      static_cast<std::size_t>(std::lround(view->frame.height * scale)));
        draw(*view, {}, scale, buffer);
        frame = CapturedFrame{.pixels = std::move(buffer),
                              .masks = std::move(*areas),
                              .scale = scale,
                              .paintSerial = mApplication.paintSerial};
    }
    mTime->schedule(delay, [completion = std::move(completion), frame = std::move(frame)]() mutable {
        completion(std::move(frame));
    });
}

}  // namespace merovanta::inmemory
