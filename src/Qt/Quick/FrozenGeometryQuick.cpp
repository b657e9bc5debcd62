#include "Qt/Quick/FrozenGeometryQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QSGTransformNode>
#include <algorithm>
#include <cmath>
// The public interface shows neither the scene graph node of an item nor the item's transforms.
#include <private/qquickitem_p.h>
#include <private/qquickshadereffectsource_p.h>

namespace merovanta::quick {

namespace {

/// The item's place in its parent, composed as the scene graph does it.
QMatrix4x4 placement(const QQuickItem& item, const QQuickItemPrivate& details) {
    QMatrix4x4 matrix;
    matrix.translate(static_cast<float>(item.x()), static_cast<float>(item.y()));
    for (auto transform = details.transforms.crbegin(); transform != details.transforms.crend();
         ++transform) {
        (*transform)->applyTo(&matrix);
    }
    if (item.scale() != 1 || item.rotation() != 0) {
        const QPointF origin = item.transformOriginPoint();
        const QVector3D pivot(origin);
        matrix.translate(pivot);
        matrix.scale(static_cast<float>(item.scale()), static_cast<float>(item.scale()));
        matrix.rotate(static_cast<float>(item.rotation()), 0, 0, 1);
        matrix.translate(-pivot);
    }
    return matrix;
}

bool isSamePlace(const QMatrix4x4& a, const QMatrix4x4& b) {
    // A hundredth of a point, and a hundredth of a pixel at the far side of a screen for what scales and
    // turns.
    const float* const left = a.constData();
    const float* const right = b.constData();
    for (int index = 0; index < 16; ++index) {
        const float tolerance = index >= 12 ? 1e-2F : 1e-5F;
        if (!(std::abs(left[index] - right[index]) <= tolerance)) return false;
    }
    return true;
}

}  // namespace

void FrozenGeometryQuick::add(QQuickItem& item) {
    for (QQuickItem* step = &item; step != nullptr; step = step->parentItem()) {
        if (std::find(mSeen.begin(), mSeen.end(), step) != mSeen.end()) return;
        mSeen.push_back(step);
        addOne(*step);
    }
}

void FrozenGeometryQuick::addOne(QQuickItem& item) {
    const QQuickItemPrivate* const details = QQuickItemPrivate::get(&item);
    // An item without a node has not been painted at all.
    if (details->itemNodeInstance == nullptr) return;
    mPlacements.push_back({details->itemNodeInstance, placement(item, *details)});
    // A layered item is painted by a stand-in, which animators then move in its place.
    const bool isLayered =
        details->extra.isAllocated() && details->extra->layer != nullptr && details->extra->layer->enabled();
    QQuickItem* const standIn = isLayered ? details->extra->layer->effectSource() : nullptr;
    if (standIn != nullptr) addOne(*standIn);
}

bool FrozenGeometryQuick::matchesScene() const {
    return std::all_of(mPlacements.begin(), mPlacements.end(), [](const Placement& placement) {
        return isSamePlace(placement.node->matrix(), placement.expected);
    });
}

}  // namespace merovanta::quick
