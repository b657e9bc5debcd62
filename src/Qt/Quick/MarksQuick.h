#pragma once

#include <optional>

namespace merovanta::quick {

/// What the host, or the library itself, has said about one item, popup or window.
struct MarksQuick {
    int tag = 0;
    std::optional<bool> masked;
    bool tapsPrivate = false;
    /// Whether it is one of the library's own.
    bool isOwn = false;
    /// Whether it is, of those, a plain opaque rectangle that hides what is behind it.
    bool isGround = false;
};

}  // namespace merovanta::quick
