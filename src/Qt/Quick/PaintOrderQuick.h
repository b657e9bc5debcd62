#pragma once

#include <QtCore/QList>

class QQuickItem;

namespace merovanta::quick {

/// The children of an item, back to front.
[[nodiscard]] QList<QQuickItem*> inPaintOrder(const QQuickItem& item);

}  // namespace merovanta::quick
