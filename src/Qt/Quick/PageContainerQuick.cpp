#include "Qt/Quick/PageContainerQuick.h"

#include <QtQuick/QQuickItem>

#include "Qt/Quick/PaintOrderQuick.h"

namespace merovanta::quick {

namespace {

constexpr int maximumDepth = 32;
constexpr double tolerance = 1;

bool isContainer(const QQuickItem& item) {
    return isStackView(item) || item.inherits("QQuickSwipeView") || item.inherits("QQuickStackLayout");
}

/// Whether the child is all that is to be seen of its parent.
bool fills(const QQuickItem& child, const QQuickItem& parent) {
    return child.isVisible() && child.width() > 0 && child.height() > 0 && child.x() <= tolerance &&
           child.y() <= tolerance && child.x() + child.width() >= parent.width() - tolerance &&
           child.y() + child.height() >= parent.height() - tolerance;
}

QQuickItem* search(QQuickItem* item, int depth) {
    item = loadedItem(item);
    if (item == nullptr || depth > maximumDepth) return nullptr;
    if (isContainer(*item)) return item;
    // Pages and other panes put a header, a footer and padding around what is their content all the same.
    if (item->inherits("QQuickPane")) {
        return search(item->property("contentItem").value<QQuickItem*>(), depth + 1);
    }
    const auto children = inPaintOrder(*item);
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (!fills(**child, *item) || (*child)->inherits("QQuickOverlay")) continue;
        if (QQuickItem* const found = search(*child, depth + 1)) return found;
    }
    return nullptr;
}

}  // namespace

QQuickItem* loadedItem(QQuickItem* item) {
    while (item != nullptr && item->inherits("QQuickLoader")) {
        item = qobject_cast<QQuickItem*>(item->property("item").value<QObject*>());
    }
    return item;
}

QQuickItem* pageContainer(QQuickItem* screen) {
    return search(screen, 0);
}

bool isStackView(const QQuickItem& item) {
    return item.inherits("QQuickStackView");
}

}  // namespace merovanta::quick
