#pragma once

namespace merovanta {

/// A place in a view's coordinates, in points.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

/// An area in a view's coordinates, in points; the origin is the top left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;
};

}  // namespace merovanta
