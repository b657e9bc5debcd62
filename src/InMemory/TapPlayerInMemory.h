#pragma once

#include "InMemory/TapRecognizersInMemory.h"
#include "Platform/TapPlayer.h"

namespace merovanta::inmemory {

/// Taps the views that have something to do on a tap, and tells the recognisers.
class TapPlayerInMemory : public TapPlayer {
 public:
    explicit TapPlayerInMemory(TapRecognizersInMemory& recognizers) : mRecognizers(recognizers) {}

    bool tap(const View& root, const Point& point) override;

 private:
    TapRecognizersInMemory& mRecognizers;
};

}  // namespace merovanta::inmemory
