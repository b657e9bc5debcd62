#pragma once

#include <QtCore/QRectF>
#include <QtGui/QMatrix4x4>
#include <optional>

class QQuickWindow;

namespace merovanta::quick {

/// How an item lies in the picture.
struct SightQuick {
    /// Of the item's coordinates to those of the window.
    QMatrix4x4 matrix;
    /// The part of the picture in which the item can show. In pixels.
    QRectF shown;
    /// How much of the picture's pixels one pixel of the layers around the item is at most; 0 in none.
    double layerPixel = 0;
    /// Pixels per point.
    double scale = 1;
};

/// What an item does to the sight of what is in it.
struct SightStepQuick {
    /// Its place in its parent.
    QMatrix4x4 place;
    /// Whether it lies on its parent's plane, whatever the depth of that is.
    bool isOnPlane = false;
    bool isLayered = false;
    /// In the item's coordinates; absent if it does not clip.
    std::optional<QRectF> clip;
};

/// Of the window, in which its content item lies.
[[nodiscard]] SightQuick sightOf(const QQuickWindow& window);

[[nodiscard]] SightQuick sightIn(const SightQuick& outer, const SightStepQuick& step);

/// The pixels around an area in the item's coordinates, rounded outwards; all of what may show if the area
/// cannot be told.
[[nodiscard]] QRectF pixelsOf(const SightQuick& sight, const std::optional<QRectF>& area);

/// The pixels that are wholly within an area in the item's coordinates, with one to spare but at the edges of
/// the picture, of the size given; absent if something but shifts and scales lies between.
[[nodiscard]] std::optional<QRectF> pixelsWithin(const SightQuick& sight, const QRectF& area,
                                                 const QSizeF& picture);

}  // namespace merovanta::quick
