#include "Qt/Quick/PlacementQuick.h"

#include <QtGui/QVector3D>
#include <QtQuick/QQuickItem>
// The public interface does not show an item's transforms.
#include <private/qquickitem_p.h>

namespace merovanta::quick {

QMatrix4x4 placementOf(const QQuickItem& item) {
    const QQuickItemPrivate& details = *QQuickItemPrivate::get(&item);
    QMatrix4x4 matrix;
    matrix.translate(static_cast<float>(item.x()), static_cast<float>(item.y()));
    for (auto transform = details.transforms.crbegin(); transform != details.transforms.crend();
         ++transform) {
        (*transform)->applyTo(&matrix);
    }
    if (details.scale() != 1 || details.rotation() != 0) {
        const QPointF origin = item.transformOriginPoint();
        const QVector3D pivot(origin);
        matrix.translate(pivot);
        matrix.scale(static_cast<float>(item.scale()), static_cast<float>(item.scale()));
        matrix.rotate(static_cast<float>(item.rotation()), 0, 0, 1);
        matrix.translate(-pivot);
    }
    return matrix;
}

}  // namespace merovanta::quick
