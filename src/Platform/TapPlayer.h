#pragma once

#include "Platform/Geometry.h"
#include "Platform/View.h"

namespace merovanta {

/// Taps in the host application in the visitor's place. Thread: main.
class TapPlayer {
 public:
    virtual ~TapPlayer() = default;

    /// Finds the deepest view under this point, given in the root view's points, that takes touches, and
    /// presses and releases on it there, as the visitor would. Only recognisers made for it report the tap.
    /// False if no view takes touches there, in particular outside the root view, and on what the visitor
    /// must press in person.
    virtual bool tap(const View& root, const Point& point) = 0;
};

}  // namespace merovanta
