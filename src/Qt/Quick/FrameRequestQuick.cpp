#include "Qt/Quick/FrameRequestQuick.h"

#include <QtQuick/QQuickWindow>
#include <cmath>
#include <utility>

#include "Qt/Quick/MaskWalkQuick.h"
#include "Qt/Quick/PaintSerialQuick.h"

namespace merovanta::quick {

FrameRequestQuick::FrameRequestQuick(PixelBuffer buffer, std::shared_ptr<MaskJudge> judge)
    : mJudge(std::move(judge)) {
    mFrame.pixels = std::move(buffer);
}

void FrameRequestQuick::freeze(const QQuickWindow& window) {
    // A second synchronisation means that the frame of the first one never came.
    if (mStage != Stage::waiting) return fail();
    MaskWalkQuick walk(window, *mJudge);
    walk.run();
    mFrame.masks = walk.takeAreas();
    mGeometry = walk.takeGeometry();
    mMarksSerial = PaintSerialQuick::outdated();
    // A layer's picture may be one frame older than the nodes, so they must be in place already now, before
    // the animators move on, and not only when the frame is done.
    if (!mGeometry.matchesScene()) return fail();
    mFrame.scale = window.effectiveDevicePixelRatio();
    mSize = QSizeF(window.size()) * mFrame.scale;
    mStage = Stage::frozen;
}

void FrameRequestQuick::verify() {
    if (mStage == Stage::frozen) mStage = mGeometry.matchesScene() ? Stage::verified : Stage::failed;
}

bool FrameRequestQuick::fits(QSize pixels) const {
    // Windowing systems round fractions of a pixel each in its own way.
    return !pixels.isEmpty() && std::abs(pixels.width() - mSize.width()) <= 1 &&
           std::abs(pixels.height() - mSize.height()) <= 1;
}

std::optional<CapturedFrame> FrameRequestQuick::takeFrame() {
    if (mStage != Stage::verified) return std::nullopt;
    return std::move(mFrame);
}

}  // namespace merovanta::quick
