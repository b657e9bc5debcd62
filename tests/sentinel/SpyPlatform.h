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
class SpyPlatform final : public Platform {
 public:
    Application& application() override { return mReal.application(); }
    ScreenCapture& screenCapture() override { return capture; }
    TapRecognizerFactory& tapRecognizers() override { return mReal.tapRecognizers(); }
    TapPlayer& tapPlayer() override { return mReal.tapPlayer(); }
    ImageOverlayFactory& imageOverlays() override { return mReal.imageOverlays(); }
    AlertFactory& alerts() override { return mReal.alerts(); }
    WidgetViewFactory& widgets() override { return mReal.widgets(); }
    CoverViewFactory& coverViews() override { return mReal.coverViews(); }
    WebViewFactory& webViews() override { return mReal.webViews(); }
    DocumentPreviewFactory& documentPreviews() override { return mReal.documentPreviews(); }
    MainQueue& mainQueue() override { return mReal.mainQueue(); }
    WorkQueue& workQueue() override { return mReal.workQueue(); }
    TimerFactory& timers() override { return handTimers; }
    Clock& clock() override { return mReal.clock(); }
    Random& random() override { return mReal.random(); }
    HttpSession& httpSession() override { return mReal.httpSession(); }
    WebSocketFactory& webSockets() override { return mReal.webSockets(); }
    UserDefaults& userDefaults() override { return mReal.userDefaults(); }
    FileManager& fileManager() override { return mReal.fileManager(); }
    Bundle& bundle() override { return mReal.bundle(); }

    HandTimers handTimers;

 private:
    quick::PlatformQuick mReal;

 public:
    SpyCapture capture{mReal.screenCapture()};
};

}  // namespace merovanta::test
