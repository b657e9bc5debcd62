#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>

#include "Platform/ImageOverlay.h"
#include "Platform/PixelBuffer.h"
#include "Platform/Timer.h"

namespace merovanta {

/// The agent's drawings over the host application: each is shown at half opacity and leaves after its time.
/// Thread: main; pictures are unpacked on the work queue.
class Drawings : public std::enable_shared_from_this<Drawings> {
 public:
    /// A PNG picture; what is none, or more than can be shown at once, is ignored.
    void show(std::string png);

 private:
    struct Drawing {
        std::size_t pixelCount = 0;
        std::unique_ptr<ImageOverlay> overlay;
        std::unique_ptr<Timer> timer;
    };
    using Place = std::list<Drawing>::iterator;

    void unpacked(Place place, PixelBuffer pixels);
    void remove(Place place);

    const double drawingTimeout = 5.0;
    // Those on their way through the work queue are in it already.
    std::list<Drawing> mDrawings;
    std::size_t mPixelCount = 0;
};

}  // namespace merovanta
