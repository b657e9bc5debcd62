#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "Qt/Quick/PlatformQuick.h"

namespace merovanta::test {

/// Timers that only tick when they are told to.
class HandTimers final : public TimerFactory {
 public:
    std::unique_ptr<Timer> schedule(Interval interval, bool /*repeats*/,
                                    std::function<void()> action) override {
        if (interval != seconds(0.3)) return std::make_unique<Timer>();
        auto timer = std::make_unique<HandTimer>();
        timer->owner = this;
        tick = std::move(action);
        return timer;
    }

    /// The timer of the pictures; empty if none is scheduled.
    std::function<void()> tick;

 private:
    struct HandTimer final : Timer {
        ~HandTimer() override { owner->tick = nullptr; }
        HandTimers* owner = nullptr;
    };
};

/// Shows each frame to somebody before it goes on its way.
class SpyCapture final : public ScreenCapture {
 public:
    explicit SpyCapture(ScreenCapture& real) : mReal(real) {}

    std::uint64_t paintSerial(const View& root) override { return mReal.paintSerial(root); }
    void capture(std::shared_ptr<View> root, PixelBuffer buffer, std::shared_ptr<MaskJudge> judge,
                 Completion completion) override {
        mReal.capture(std::move(root), std::move(buffer), std::move(judge),
                      [this, completion = std::move(completion)](std::optional<CapturedFrame> frame) {
                          onFrame(frame);
                          completion(std::move(frame));
                      });
    }

    void setPreview(MaskPreviewSource source) override { mReal.setPreview(std::move(source)); }

    std::function<void(const std::optional<CapturedFrame>&)> onFrame;

 private:
    ScreenCapture& mReal;
};

/// The real platform, but for the pace of the pictures, which the test sets, and a look at each of them.
class SpyPlatform final : public quick::PlatformQuick {
 public:
    ScreenCapture& screenCapture() override { return capture; }
    TimerFactory& timers() override { return handTimers; }

    HandTimers handTimers;
    SpyCapture capture{PlatformQuick::screenCapture()};
};

}  // namespace merovanta::test
