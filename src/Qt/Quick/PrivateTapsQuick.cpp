#include "Qt/Quick/PrivateTapsQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>

#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/PopupsQuick.h"

namespace merovanta::quick {

namespace {

bool isKept(const QObject* object) {
    const MarksQuick* const marks = object == nullptr ? nullptr : MerovantaQuick::marksOf(*object);
    return marks != nullptr && marks->tapsPrivate;
}

/// Without a pixel to spare: half a point around the item counts as well.
bool isInside(const QQuickItem& item, QPointF place) {
    return item.boundingRect().adjusted(-0.5, -0.5, 0.5, 0.5).contains(place);
}

/// Whether the place is in an item that keeps its taps, or in one of those in it: also where these reach out
/// of it.
bool isKeptIn(const QQuickItem& item, QPointF scene, bool isAroundKept) {
    if (!item.isVisible()) return false;
    const bool isHere = isInside(item, item.mapFromScene(scene));
    const bool keeps = isAroundKept || isKept(&item) || isKept(popupShownBy(item));
    if (isHere && keeps) return true;
    if (item.clip() && !isHere) return false;
    const auto children = item.childItems();
    return std::any_of(children.begin(), children.end(),
                       [&](const QQuickItem* child) { return isKeptIn(*child, scene, keeps); });
}

}  // namespace

bool areTapsPrivateAt(const QQuickWindow& window, QPointF scene) {
    if (!MerovantaQuick::areAnyTapsPrivate()) return false;
    if (isKept(&window)) return true;
    if (topmostModalPopup(window) == nullptr) return isKeptIn(*window.contentItem(), scene, false);
    const auto layers = window.contentItem()->childItems();
    return std::any_of(layers.begin(), layers.end(), [scene](const QQuickItem* layer) {
        return layer->inherits("QQuickOverlay") && isKeptIn(*layer, scene, false);
    });
}

}  // namespace merovanta::quick
