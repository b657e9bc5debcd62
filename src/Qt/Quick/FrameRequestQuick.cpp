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
    mGeometry.emplace(walk.takeGeometry());
    mMarksSerial = PaintSerialQuick::outdated();
    mGeometry->compareWithScene();
    mFrame.scale = window.effectiveDevicePixelRatio();
    mSize = QSizeF(window.size()) * mFrame.scale;
    mStage = Stage::frozen;
}

void FrameRequestQuick::verify() {
    if (mStage != Stage::frozen) return;
    mStage = Stage::verified;
    mGeometry->compareWithScene();
    if (!mGeometry->hasMoved()) return;
    // What moves may be behind what is exempt, too.
    std::erase_if(mFrame.masks, [](const MaskArea& area) { return area.kind == MaskArea::Kind::exempt; });
    auto moved = mGeometry->areasInScene();
    mFrame.masks.insert(mFrame.masks.end(), moved.begin(), moved.end());
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
