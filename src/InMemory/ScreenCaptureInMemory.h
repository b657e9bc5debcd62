#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "InMemory/ApplicationInMemory.h"
#include "InMemory/VirtualTime.h"
#include "Platform/ScreenCapture.h"

namespace merovanta::inmemory {

/// Draws the view tree as coloured rectangles.
class ScreenCaptureInMemory : public ScreenCapture {
 public:
    ScreenCaptureInMemory(std::shared_ptr<VirtualTime> time, ApplicationInMemory& application)
        : mTime(std::move(time)), mApplication(application) {}

    [[nodiscard]] std::uint64_t paintSerial(const View& root) override;
    void capture(std::shared_ptr<View> root, PixelBuffer buffer, std::shared_ptr<MaskJudge> judge,
                 Completion completion) override;

    void setPreview(MaskPreviewSource source) override { preview = std::move(source); }

    /// How many pictures were asked for.
    int captures = 0;

    /// Whether there are none to be had.
    bool isFailing = false;

    /// Empty for none.
    MaskPreviewSource preview;

    /// From the picture to its delivery, as a toolkit with a render thread has it.
    std::chrono::milliseconds delay{0};

 private:
    std::shared_ptr<VirtualTime> mTime;
    ApplicationInMemory& mApplication;
};

}  // namespace merovanta::inmemory
