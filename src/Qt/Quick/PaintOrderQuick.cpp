#include "Qt/Quick/PaintOrderQuick.h"

#include <QtQuick/QQuickItem>
#include <algorithm>
// The public interface does not show the order that the scene graph has found already.
#include <private/qquickitem_p.h>

namespace merovanta::quick {

QList<QQuickItem*> inPaintOrder(const QQuickItem& item) {
    return QQuickItemPrivate::get(&item)->paintOrderChildItems();
}

double zInFrontOfAll(const QQuickItem& item) {
    double front = zBehindPopups + 1;
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        front = std::max(front, child->z());
    return front + 1;
}

}  // namespace merovanta::quick
