#include "Qt/Quick/HitTestQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/PopupsQuick.h"

namespace merovanta::quick {

namespace {

bool takesTouches(const QQuickItem& item, const QQuickWindow& window) {
    // The layer of the popups lets through what hits no popup, unless one of them is modal.
    if (item.inherits("QQuickOverlay")) return topmostModalPopup(window) != nullptr;
    // An item with handlers accepts buttons for them. Some classes have an "enabled" of their own.
    return item.acceptedMouseButtons().testFlag(Qt::LeftButton) && item.property("enabled").toBool();
}

const QQuickItem* takerIn(const QQuickItem& item, QPointF scene, const QQuickWindow& window) {
    if (!item.isVisible() || !item.isEnabled()) return nullptr;
    const QPointF place = item.mapFromScene(scene);
    if (item.clip() && !item.clipRect().contains(place)) return nullptr;
    const auto children = inPaintOrder(item);
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const auto* const taker = takerIn(**child, scene, window)) return taker;
    }
    return item.contains(place) && takesTouches(item, window) ? &item : nullptr;
}

}  // namespace

const QQuickItem* takerAt(const QQuickWindow& window, QPointF scene) {
    return takerIn(*window.contentItem(), scene, window);
}

}  // namespace merovanta::quick
