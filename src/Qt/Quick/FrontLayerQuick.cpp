#include "Qt/Quick/FrontLayerQuick.h"

#include <QtQuick/QQuickItem>

#include "Qt/Quick/AlertQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/PopupsQuick.h"

namespace merovanta::quick {

void putInFront(QQuickItem& item, QQuickItem& parent, double z) {
    const QObject* popup = topmostModalPopup(*parent.window());
    // The library's own questions come first.
    if (popup != nullptr && AlertQuick::isAlert(*popup)) popup = nullptr;
    // All that shows of a popup, whose class is not known here.
    auto* const popupItem = popup == nullptr ? nullptr : popup->property("contentItem").value<QQuickItem*>();
    item.setZ(popupItem == nullptr ? z : zInFrontOfAll(parent));
    item.setParentItem(&parent);
    if (popupItem == nullptr) return;
    const auto goBehindPopups = [&item, z] { item.setZ(z); };
    QObject::connect(popupItem, &QQuickItem::visibleChanged, &item, [popupItem, goBehindPopups] {
        if (!popupItem->isVisible()) goBehindPopups();
    });
    QObject::connect(popupItem, &QObject::destroyed, &item, goBehindPopups);
    for (const QQuickItem* layer = popupItem->parentItem(); layer != nullptr; layer = layer->parentItem()) {
        if (layer->inherits("QQuickOverlay"))
            QObject::connect(layer, &QQuickItem::childrenChanged, &item, goBehindPopups);
    }
}

}  // namespace merovanta::quick
