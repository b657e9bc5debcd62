#include "InMemory/ViewInMemory.h"

#include <algorithm>

namespace merovanta::inmemory {

namespace {

/// Where the view's own origin lies in the window.
Point originInWindow(std::shared_ptr<NativeView> view) {
    Point origin;
    for (; view; view = view->superview.lock()) {
        origin.x += view->frame.x;
        origin.y += view->frame.y;
    }
    return origin;
}

bool isInPrivate(const NativeView& view, const Point& point) {
    const bool isInside =
        point.x >= 0 && point.y >= 0 && point.x < view.frame.width && point.y < view.frame.height;
    if (isInside && view.keepsTapsPrivate) return true;
    if (!isInside && view.clips) return false;
    return std::any_of(view.subviews.begin(), view.subviews.end(), [&](const auto& subview) {
        return isInPrivate(*subview, {point.x - subview->frame.x, point.y - subview->frame.y});
    });
}

}  // namespace

std::string ViewInMemory::className() const {
    const auto view = native();
    return view ? view->classNames.front() : std::string();
}

bool ViewInMemory::isKindOf(std::string_view name) const {
    const auto view = native();
    return view &&
           std::find(view->classNames.begin(), view->classNames.end(), name) != view->classNames.end();
}

long ViewInMemory::tag() const {
    const auto view = native();
    return view ? view->tag : 0;
}

Rect ViewInMemory::frame() const {
    const auto view = native();
    return view ? view->frame : Rect();
}

Rect ViewInMemory::bounds() const {
    return {0, 0, frame().width, frame().height};
}

std::vector<std::shared_ptr<View>> ViewInMemory::subviews() const {
    std::vector<std::shared_ptr<View>> handles;
    if (const auto view = native()) {
        for (const auto& subview : view->subviews)
            handles.push_back(std::make_shared<ViewInMemory>(subview));
    }
    return handles;
}

bool ViewInMemory::keepsTapPrivate(const Point& point) const {
    const auto view = native();
    return view && isInPrivate(*view, point);
}

Rect ViewInMemory::convert(const Rect& rect, const View& target) const {
    const auto from = native();
    const auto to = dynamic_cast<const ViewInMemory&>(target).native();
    if (!from || !to) return {};
    const Point source = originInWindow(from);
    const Point destination = originInWindow(to);
    return {rect.x + source.x - destination.x, rect.y + source.y - destination.y, rect.width, rect.height};
}

}  // namespace merovanta::inmemory
