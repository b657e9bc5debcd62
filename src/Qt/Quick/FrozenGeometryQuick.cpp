#include "Qt/Quick/FrozenGeometryQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QSGNode>
#include <algorithm>
#include <cmath>
// The public interface does not show the scene graph node of an item.
#include <private/qquickitem_p.h>
#include <private/qquickshadereffectsource_p.h>

#include "Qt/Quick/PlacementQuick.h"
#include "Qt/Quick/SceneGraphQuick.h"

namespace merovanta::quick {

namespace {

bool isSamePlace(const QMatrix4x4& a, const QMatrix4x4& b) {
    // A hundredth of a point, and a hundredth of a pixel at the far side of a screen for what scales and
    // turns.
    const float* const left = a.constData();
    const float* const right = b.constData();
    for (int index = 0; index < 16; ++index) {
        const float tolerance = index >= 12 ? 1e-2F : 1e-5F;
        // Also where both are infinite, or both no number at all.
        const bool isSame =
            left[index] == right[index] || (std::isnan(left[index]) && std::isnan(right[index]));
        if (!isSame && !(std::abs(left[index] - right[index]) <= tolerance)) return false;
    }
    return true;
}

}  // namespace

void FrozenGeometryQuick::add(const QQuickItem& item) {
    const QQuickItemPrivate* const details = QQuickItemPrivate::get(&item);
    // An item without a node has not been painted at all.
    if (details->itemNodeInstance == nullptr) return;
    mPlacements.push_back({details->itemNodeInstance, placementOf(item)});
    // A layered item is painted by a stand-in, which animators then move in its place.
    const QQuickItemLayer* const layer = layerOf(item);
    const QQuickItem* const standIn = layer == nullptr ? nullptr : layer->effectSource();
    if (standIn != nullptr) add(*standIn);
}

void FrozenGeometryQuick::addTransparent(const QSGOpacityNode& node) {
    mTransparent.push_back(&node);
}

void FrozenGeometryQuick::add(const FrozenGeometryQuick& other) {
    mPlacements.insert(mPlacements.end(), other.mPlacements.begin(), other.mPlacements.end());
    mTransparent.insert(mTransparent.end(), other.mTransparent.begin(), other.mTransparent.end());
}

bool FrozenGeometryQuick::matchesScene() const {
    const bool areInPlace = std::all_of(
        mPlacements.begin(), mPlacements.end(),
        [](const Placement& placement) { return isSamePlace(placement.node->matrix(), placement.expected); });
    return areInPlace && std::all_of(mTransparent.begin(), mTransparent.end(),
                                     [](const QSGOpacityNode* node) { return node->opacity() <= 0; });
}

}  // namespace merovanta::quick
