#include "Qt/Quick/FrameRequestQuick.h"

#include <QtQuick/QQuickWindow>
#include <cmath>
#include <utility>

#include "Qt/Quick/SceneGraphQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

Rect place(const QQuickItem& item) {
    const QRectF rect = item.mapRectToScene(QRectF(QPointF(), item.size()));
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

}  // namespace

FrameRequestQuick::FrameRequestQuick(PixelBuffer buffer, ScreenCapture::MaskProvider masks)
    : mProvider(std::move(masks)) {
    mFrame.pixels = std::move(buffer);
}

void FrameRequestQuick::freeze(const QQuickWindow& window) {
    // A second synchronisation means that the frame of the first one never came.
    if (mStage != Stage::waiting) return fail();
    auto masks = mProvider();
    if (!masks) return fail();
    std::vector<MaskArea> layers;
    for (const MaskArea& mask : *masks) {
        QQuickItem* const item = mask.view == nullptr ? nullptr : ViewQuick::itemOf(*mask.view);
        if (item == nullptr) return fail();
        mGeometry.add(*item);
        if (const QQuickItem* const layer = rearrangingLayer(*item))
            layers.push_back({place(*layer), mask.view});
    }
    masks->insert(masks->end(), layers.begin(), layers.end());
    // A layer's picture may be one frame older than the nodes, so they must be in place already now, before
    // the animators move on, and not only when the frame is done.
    if (!mGeometry.matchesScene()) return fail();
    mFrame.masks = std::move(*masks);
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
