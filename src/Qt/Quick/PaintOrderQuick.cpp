#include "Qt/Quick/PaintOrderQuick.h"

#include <QtQuick/QQuickItem>
#include <algorithm>

namespace merovanta::quick {

QList<QQuickItem*> inPaintOrder(const QQuickItem& item) {
    QList<QQuickItem*> children = item.childItems();
    const auto isBehind = [](const QQuickItem* a, const QQuickItem* b) { return a->z() < b->z(); };
    if (!std::is_sorted(children.cbegin(), children.cend(), isBehind)) {
        std::stable_sort(children.begin(), children.end(), isBehind);
    }
    return children;
}

double zInFrontOfAll(const QQuickItem& item) {
    double front = zBehindPopups + 1;
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        front = std::max(front, child->z());
    return front + 1;
}

}  // namespace merovanta::quick
