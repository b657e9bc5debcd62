#pragma once

#include "Platform/TapPlayer.h"

namespace merovanta::inmemory {

/// Taps the views that have something to do on a tap.
class TapPlayerInMemory : public TapPlayer {
 public:
    bool tap(const View& root, const Point& point) override;
};

}  // namespace merovanta::inmemory
