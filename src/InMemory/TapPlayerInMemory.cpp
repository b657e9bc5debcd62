#include "InMemory/TapPlayerInMemory.h"

#include <memory>

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

std::shared_ptr<NativeView> hitTest(const std::shared_ptr<NativeView>& view, const Point& point) {
    const Rect& frame = view->frame;
    if (!(point.x >= 0 && point.y >= 0 && point.x < frame.width && point.y < frame.height)) return nullptr;
    for (auto subview = view->subviews.rbegin(); subview != view->subviews.rend(); ++subview) {
        const Rect& inner = (*subview)->frame;
        if (auto hit = hitTest(*subview, {point.x - inner.x, point.y - inner.y})) return hit;
    }
    return view->onTap ? view : nullptr;
}

}  // namespace

bool TapPlayerInMemory::tap(const View& root, const Point& point) {
    const auto view = dynamic_cast<const ViewInMemory&>(root).native();
    const auto hit = view ? hitTest(view, point) : nullptr;
    if (!hit) return false;
    hit->onTap();
    mRecognizers.playedBack(point);
    return true;
}

}  // namespace merovanta::inmemory
