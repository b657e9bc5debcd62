#pragma once

#include <QtCore/QSizeF>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>

#include "Platform/ScreenCapture.h"
#include "Qt/Quick/FrozenGeometryQuick.h"

class QQuickWindow;

namespace merovanta::quick {

/// One picture in the making. It passes from the main thread to the render thread and back, and only the
/// thread that has it touches it.
class FrameRequestQuick {
 public:
    FrameRequestQuick(PixelBuffer buffer, std::shared_ptr<MaskJudge> judge);

    /// Finds the masks of the geometry that was just handed to the scene graph. Call it on the thread that
    /// renders, while the main thread stands still.
    void freeze(const QQuickWindow& window);

    /// Whether freeze() was called and a frame of its geometry is awaited.
    [[nodiscard]] bool isFrozen() const { return mStage == Stage::frozen; }
    [[nodiscard]] bool hasFailed() const { return mStage == Stage::failed; }

    /// Adds masks for what the scene just painted shows elsewhere than in the frozen geometry. On the thread
    /// that renders.
    void verify();

    void fail() { mStage = Stage::failed; }

    /// Whether a picture of this many pixels can be that of the frozen geometry.
    [[nodiscard]] bool fits(QSize pixels) const;

    [[nodiscard]] PixelBuffer& pixels() { return mFrame.pixels; }
    void setPaintSerial(std::uint64_t serial) { mFrame.paintSerial = std::max(serial, mMarksSerial); }

    /// The result: nothing unless the frame was verified.
    [[nodiscard]] std::optional<CapturedFrame> takeFrame();

 private:
    enum class Stage { waiting, frozen, verified, failed };

    Stage mStage = Stage::waiting;
    std::shared_ptr<MaskJudge> mJudge;
    CapturedFrame mFrame;
    QSizeF mSize;
    std::uint64_t mMarksSerial = 0;
    std::optional<FrozenGeometryQuick> mGeometry;
};

}  // namespace merovanta::quick
