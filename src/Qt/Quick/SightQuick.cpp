#include "Qt/Quick/SightQuick.h"

#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cmath>
#include <limits>

#include "Qt/Quick/PaintedAreaQuick.h"

namespace merovanta::quick {

namespace {

/// How many pixels renderers may paint beside an edge.
constexpr double blur = 1;

/// The matrix for what is painted on the plane of the item, whatever its own depth was.
QMatrix4x4 flattened(const QMatrix4x4& matrix) {
    if (matrix(0, 2) == 0 && matrix(1, 2) == 0 && matrix(3, 2) == 0) return matrix;
    QMatrix4x4 flat = matrix;
    flat.setColumn(2, QVector4D());
    return flat;
}

/// How many pixels a length of one becomes at most; infinite where that differs from place to place.
double magnification(const QMatrix4x4& matrix) {
    if (matrix(3, 0) != 0 || matrix(3, 1) != 0) return std::numeric_limits<double>::infinity();
    return std::max(std::hypot(static_cast<double>(matrix(0, 0)), static_cast<double>(matrix(1, 0))),
                    std::hypot(static_cast<double>(matrix(0, 1)), static_cast<double>(matrix(1, 1))));
}

}  // namespace

SightQuick sightOf(const QQuickWindow& window) {
    SightQuick sight{.scale = window.effectiveDevicePixelRatio()};
    const QSizeF size = QSizeF(window.size()) * sight.scale;
    sight.shown = QRectF(0, 0, std::ceil(size.width()), std::ceil(size.height()));
    return sight;
}

SightQuick sightIn(const SightQuick& outer, const SightStepQuick& step) {
    SightQuick sight = outer;
    sight.matrix = (step.isOnPlane ? flattened(outer.matrix) : outer.matrix) * step.place;
    if (step.isLayered) sight.layerPixel = std::max(sight.layerPixel, magnification(sight.matrix));
    // Upright around a clip that is turned: that is rather too much than too little.
    if (step.clip && mapped(sight.matrix, *step.clip)) sight.shown = pixelsOf(sight, step.clip);
    return sight;
}

QRectF pixelsOf(const SightQuick& sight, const std::optional<QRectF>& area) {
    const auto place = area ? mapped(sight.matrix, *area) : std::nullopt;
    if (!place || !std::isfinite(sight.layerPixel)) return sight.shown;
    const double edge = blur + sight.layerPixel;
    const double left = std::floor(place->left() * sight.scale - edge);
    const double top = std::floor(place->top() * sight.scale - edge);
    const double right = std::ceil(place->right() * sight.scale + edge);
    const double bottom = std::ceil(place->bottom() * sight.scale + edge);
    return QRectF(left, top, right - left, bottom - top) & sight.shown;
}

std::optional<QRectF> pixelsWithin(const SightQuick& sight, const QRectF& area, const QSizeF& picture) {
    const auto place = mapped(sight.matrix, area);
    // What lies before or behind the window's plane may be cut off.
    if (!place || !isShiftOrScale(sight.matrix) || sight.matrix(2, 3) != 0) return std::nullopt;
    const auto begin = [&](double edge) { return edge <= 0 ? 0 : std::ceil(edge * sight.scale) + blur; };
    const auto end = [&](double edge, double limit) {
        return edge * sight.scale >= limit ? std::floor(limit) : std::floor(edge * sight.scale) - blur;
    };
    return QRectF(QPointF(begin(place->left()), begin(place->top())),
                  QPointF(end(place->right(), picture.width()), end(place->bottom(), picture.height())));
}

}  // namespace merovanta::quick
