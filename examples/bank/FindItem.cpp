#include "FindItem.h"

namespace {

QQuickItem* findIn(QQuickItem* item, const QString& objectName) {
    if (!item->isVisible()) return nullptr;
    if (item->objectName() == objectName) return item;
    const auto children = item->childItems();
    for (auto* child : children) {
        if (auto* found = findIn(child, objectName)) return found;
    }
    return nullptr;
}

}  // namespace

QQuickItem* findVisibleItem(const QQuickWindow& window, const QString& objectName) {
    return findIn(window.contentItem(), objectName);
}

bool isReady(const QQuickItem& item) {
    for (const auto* step = &item; step; step = step->parentItem()) {
        // A stack of pages drops what is tapped until the new one is in place.
        if (step->property("busy").toBool()) return false;
    }
    return item.isEnabled();
}
