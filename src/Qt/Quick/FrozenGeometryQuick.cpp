#include "Qt/Quick/FrozenGeometryQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QSGNode>
#include <algorithm>
#include <cmath>
// The public interface does not show the scene graph node of an item.
#include <private/qquickitem_p.h>
#include <private/qquickshadereffectsource_p.h>

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
        if (!(std::abs(left[index] - right[index]) <= tolerance)) return false;
    }
    return true;
}

const QSGTransformNode* nodeOf(const QQuickItem* item) {
    return item == nullptr ? nullptr : QQuickItemPrivate::get(item)->itemNodeInstance;
}

}  // namespace

std::size_t FrozenGeometryQuick::add(const QQuickItem& item, const SightStepQuick& step,
                                     std::optional<std::size_t> parent) {
    // A layered item is painted by a stand-in, which animators then move in its place.
    const QQuickItemLayer* const layer = layerOf(item);
    mSteps.push_back({.step = step,
                      .parent = parent,
                      .bounds = QRectF(QPointF(), item.size()),
                      .node = nodeOf(&item),
                      .standIn = layer == nullptr ? nullptr : nodeOf(layer->effectSource())});
    return mSteps.size() - 1;
}

void FrozenGeometryQuick::addArea(std::size_t item, const std::optional<QRectF>& area,
                                  const MaskReason& reason, bool isHidden) {
    mAreas.push_back({item, area, reason, isHidden});
}

void FrozenGeometryQuick::addTransparent(const QSGOpacityNode& node) {
    mTransparent.push_back(&node);
}

void FrozenGeometryQuick::compareWithScene() {
    for (Step& step : mSteps) {
        for (const QSGTransformNode* const node : {step.node, step.standIn}) {
            if (node != nullptr && !isSamePlace(node->matrix(), step.step.place)) step.hasMoved = true;
        }
        mHasMoved |= step.hasMoved;
    }
    mHasAppeared |= std::any_of(mTransparent.begin(), mTransparent.end(),
                                [](const QSGOpacityNode* node) { return node->opacity() > 0; });
    mHasMoved |= mHasAppeared;
}

std::vector<MaskArea> FrozenGeometryQuick::areasInScene() const {
    const auto sights = sightsInScene();
    std::vector<MaskArea> areas;
    for (const Area& original : mAreas) {
        if (original.isHidden && !mHasAppeared) continue;
        const Area area = widened(original);
        const QRectF rect = pixelsOf(sights[area.step], area.area);
        if (rect.isEmpty()) continue;
        areas.push_back({.rect = {rect.x(), rect.y(), rect.width(), rect.height()},
                         .kind = MaskArea::Kind::cover,
                         .reason = area.reason});
    }
    return areas;
}

std::vector<SightQuick> FrozenGeometryQuick::sightsInScene() const {
    std::vector<SightQuick> sights;
    sights.reserve(mSteps.size());
    for (const Step& each : mSteps) {
        SightStepQuick step = each.step;
        const QSGTransformNode* const node = each.standIn != nullptr ? each.standIn : each.node;
        if (node != nullptr) step.place = node->matrix();
        sights.push_back(sightIn(each.parent ? sights[*each.parent] : mWindow, step));
    }
    return sights;
}

FrozenGeometryQuick::Area FrozenGeometryQuick::widened(Area area) const {
    bool hasMoved = false;
    for (std::optional<std::size_t> index = area.step; index; index = mSteps[*index].parent) {
        const Step& step = mSteps[*index];
        if (hasMoved && step.step.isLayered) {
            area.step = *index;
            area.area = step.bounds;
        }
        hasMoved |= step.hasMoved;
    }
    return area;
}

}  // namespace merovanta::quick
