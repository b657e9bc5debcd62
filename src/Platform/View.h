#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Geometry.h"

namespace merovanta {

/// A light handle to one native view (item, widget, …).
///
/// The native view stays the toolkit's own and may die at any time; a handle to a dead one is safe: it
/// answers isAlive() with false, has an empty frame and no subviews. Handles may be kept and copied by
/// shared_ptr.
///
/// Thread: the main thread; or, inside a MaskJudge's calls, the thread that makes them
/// while the main thread stands still.
class View {
 public:
    virtual ~View() = default;

    [[nodiscard]] virtual bool isAlive() const = 0;

    /// Equal for two handles to the same native view, different for two living views. Null when dead.
    [[nodiscard]] virtual const void* identity() const = 0;

    [[nodiscard]] virtual std::string className() const = 0;

    /// True if the view's class, or one that it derives from, carries this name.
    [[nodiscard]] virtual bool isKindOf(std::string_view name) const = 0;

    /// The tag that the host gave the view; 0 if it gave none.
    [[nodiscard]] virtual long tag() const = 0;

    /// In the superview's coordinates.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// In the view's own coordinates.
    [[nodiscard]] virtual Rect bounds() const = 0;

    /// Back to front, in painting order.
    [[nodiscard]] virtual std::vector<std::shared_ptr<View>> subviews() const = 0;

    /// Whether this place, in the view's own coordinates, lies in a view whose taps the host keeps private.
    [[nodiscard]] virtual bool keepsTapPrivate(const Point& point) const = 0;

    /// The rectangle, given in this view's coordinates, in those of the target: the smallest upright
    /// rectangle around the result if a transform lies between. Empty if either is dead.
    [[nodiscard]] virtual Rect convert(const Rect& rect, const View& target) const = 0;
};

}  // namespace merovanta
