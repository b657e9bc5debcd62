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

// A hundredth of a point, and a hundredth of a pixel at the far side of a screen for what scales and turns.
constexpr float shiftTolerance = 1e-2F;
constexpr float tolerance = 1e-5F;

bool isSamePlace(const QMatrix4x4& a, const QMatrix4x4& b) {
    const float* const left = a.constData();
    const float* const right = b.constData();
    for (int index = 0; index < 16; ++index) {
        const float most = index >= 12 ? shiftTolerance : tolerance;
        if (!(std::abs(left[index] - right[index]) <= most)) return false;
    }
    return true;
}

/// Whether the matrix does nothing but shift on the plane; by its flags, as it was composed.
bool isShift(const QMatrix4x4& matrix) {
    return (matrix.flags() & ~QMatrix4x4::Flags(QMatrix4x4::Translation)) == 0 && matrix(2, 3) == 0;
}

bool isElsewhere(const QSGTransformNode* node, const QMatrix4x4& place) {
    return node != nullptr && !isSamePlace(node->matrix(), place);
}

bool isShiftBy(const QMatrix4x4& matrix, float x, float y) {
    // Not all flags: they tell of more than there may be.
    if (!isShift(matrix)) {
        QMatrix4x4 shift;
        shift.translate(x, y);
        return isSamePlace(matrix, shift);
    }
    return std::abs(matrix(0, 3) - x) <= shiftTolerance && std::abs(matrix(1, 3) - y) <= shiftTolerance;
}

const QSGTransformNode* nodeOf(const QQuickItem* item) {
    return item == nullptr ? nullptr : QQuickItemPrivate::get(item)->itemNodeInstance;
}

}  // namespace

std::size_t FrozenGeometryQuick::add(const QQuickItem& item, const SightStepQuick& step,
                                     std::optional<std::size_t> parent) {
    Step& added = mSteps.emplace_back(Step{.node = nodeOf(&item), .isOnPlane = step.isOnPlane});
    if (parent) added.parent = static_cast<std::uint32_t>(*parent);
    const bool isPlain = isShift(step.place) && !step.isLayered && !step.clip;
    if (isPlain) {
        added.x = step.place(0, 3);
        added.y = step.place(1, 3);
    } else {
        // A layered item is painted by a stand-in, which animators then move in its place.
        const QQuickItemLayer* const layer = layerOf(item);
        added.details = static_cast<std::uint32_t>(mDetails.size());
        mDetails.push_back({.step = step,
                            .bounds = QRectF(QPointF(), item.size()),
                            .standIn = layer == nullptr ? nullptr : nodeOf(layer->effectSource())});
    }
    return mSteps.size() - 1;
}

SightStepQuick FrozenGeometryQuick::stepOf(const Step& step) const {
    if (step.details != none) return mDetails[step.details].step;
    SightStepQuick made{.isOnPlane = step.isOnPlane};
    made.place.translate(step.x, step.y);
    return made;
}

bool FrozenGeometryQuick::hasMoved(const Step& step) const {
    if (step.details == none) return step.node != nullptr && !isShiftBy(step.node->matrix(), step.x, step.y);
    const Details& details = mDetails[step.details];
    return isElsewhere(step.node, details.step.place) || isElsewhere(details.standIn, details.step.place);
}

void FrozenGeometryQuick::compareWithScene() {
    for (Step& step : mSteps) {
        step.hasMoved |= hasMoved(step);
        mHasMoved |= step.hasMoved;
    }
    mHasAppeared |= std::any_of(mTransparent.begin(), mTransparent.end(),
                                [](const QSGOpacityNode* node) { return node->opacity() > 0; });
    mHasMoved |= mHasAppeared || std::any_of(mOpaque.begin(), mOpaque.end(), [](const QSGOpacityNode* node) {
                     return !(node->opacity() >= 1);
                 });
}

std::vector<MaskArea> FrozenGeometryQuick::areasInScene() const {
    const auto sights = sightsInScene();
    std::vector<MaskArea> areas;
    for (const Area& original : mAreas) {
        if (original.isHidden && !mHasAppeared) continue;
        const Area area = widened(original);
        const QRectF rect = pixelsOf(sights[area.step], area.area);
        if (rect.isEmpty()) continue;
        areas.push_back(
            {.rect = {rect.x(), rect.y(), rect.width(), rect.height()}, .kind = MaskArea::Kind::cover});
    }
    return areas;
}

std::vector<SightQuick> FrozenGeometryQuick::sightsInScene() const {
    std::vector<SightQuick> sights;
    sights.reserve(mSteps.size());
    for (const Step& each : mSteps) {
        SightStepQuick step = stepOf(each);
        const auto* const standIn = each.details == none ? nullptr : mDetails[each.details].standIn;
        const QSGTransformNode* const node = standIn != nullptr ? standIn : each.node;
        if (node != nullptr) step.place = node->matrix();
        sights.push_back(sightIn(each.parent == none ? mWindow : sights[each.parent], step));
    }
    return sights;
}

FrozenGeometryQuick::Area FrozenGeometryQuick::widened(Area area) const {
    bool hasMoved = false;
    for (auto index = static_cast<std::uint32_t>(area.step); index != none; index = mSteps[index].parent) {
        const Step& step = mSteps[index];
        const Details* const details = step.details == none ? nullptr : &mDetails[step.details];
        if (hasMoved && details != nullptr && details->step.isLayered) {
            area.step = index;
            area.area = details->bounds;
        }
        hasMoved |= step.hasMoved;
    }
    return area;
}

}  // namespace merovanta::quick
