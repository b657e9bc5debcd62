#pragma once

#include <memory>
#include <vector>

#include "Platform/MainQueue.h"
#include "Platform/ScreenCapture.h"
#include "Qt/Foundation/ApplicationLifeQt.h"

class QQuickWindow;

namespace merovanta::quick {

class MaskPreviewQuick;
class WindowCaptureQuick;

/// Pictures of windows, given by their content items.
class ScreenCaptureQuick final : public ScreenCapture, private qt::ApplicationLifeQt::Observer {
 public:
    /// The queue must outlive this.
    explicit ScreenCaptureQuick(MainQueue& mainQueue);
    ~ScreenCaptureQuick() override;

    [[nodiscard]] std::uint64_t paintSerial(const View& root) override;
    void capture(std::shared_ptr<View> root, PixelBuffer buffer, std::shared_ptr<MaskJudge> judge,
                 Completion completion) override;
    void setPreview(MaskPreviewSource source) override;

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    /// The watcher of this window, from now on if there was none.
    WindowCaptureQuick& watcherOf(QQuickWindow& window);

    MainQueue& mMainQueue;
    std::vector<std::unique_ptr<WindowCaptureQuick>> mWatchers;
    /// Empty for none.
    MaskPreviewSource mPreviewSource;
    /// Null for none, and while there is no application.
    std::unique_ptr<MaskPreviewQuick> mPreview;
};

}  // namespace merovanta::quick
