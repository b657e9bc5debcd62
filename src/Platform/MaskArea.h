#pragma once

#include <cstddef>

#include "Platform/Geometry.h"

namespace merovanta {

/// What a view is covered for.
struct MaskReason {
    enum class Kind {
        /// The service's lists name its tag, or one of its classes.
        tag,
        className,
        /// The host has marked it, or what it is in.
        mark,
        /// The host covers all views with such content.
        policy,
        /// It is a text input that hides what is typed.
        hiddenInput,
    };

    Kind kind = Kind::mark;
    /// The place in the list, for the first two kinds.
    std::size_t entry = 0;

    bool operator==(const MaskReason&) const = default;
};

/// A part of the picture that has to do with privacy. The order of a picture's areas is that of painting.
struct MaskArea {
    enum class Kind {
        /// The rectangle of a view's frame by the service's own rule: in the captured view's points; black,
        /// with
        /// only its origin divided by the scale.
        fixed,
        /// What a private view takes up: in whole device pixels; black.
        cover,
        /// As cover, but of a view that paints nothing, or one colour, and is private only because of what it
        /// is in: what is exempt in front of it shows.
        backdrop,
        /// In whole device pixels: an area that the backdrops behind it leave open.
        exempt,
    };

    Rect rect;
    Kind kind = Kind::fixed;
    MaskReason reason;

    bool operator==(const MaskArea&) const = default;
};

}  // namespace merovanta
