#pragma once

#include <QtCore/QPointF>

class QQuickItem;
class QQuickWindow;

namespace merovanta::quick {

/// The item that takes a touch at this place of the window, found in the way of the window's own delivery:
/// front to back. Null if none does.
[[nodiscard]] const QQuickItem* takerAt(const QQuickWindow& window, QPointF scene);

}  // namespace merovanta::quick
