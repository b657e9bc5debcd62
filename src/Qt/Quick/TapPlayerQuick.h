#pragma once

#include "Platform/TapPlayer.h"

namespace merovanta::quick {

/// Taps through the window's own delivery of events, so that whatever answers to a click answers to this.
class TapPlayerQuick final : public TapPlayer {
 public:
    /// False also while an earlier tap is under way, and where the visitor could not tap now or must do it
    /// in person: under another modal window, while one of the library's alerts is open or files are
    /// chosen, and on the button that hands a document to another program.
    bool tap(const View& root, const Point& point) override;

 private:
    bool mIsTapping = false;
};

}  // namespace merovanta::quick
