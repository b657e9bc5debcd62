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
