#pragma once

#include <QtCore/QPointF>

class QQuickWindow;

namespace merovanta::quick {

/// Whether this place of the window lies in an item in which the host keeps taps private. What lies under a
/// modal popup cannot be tapped and does not count.
[[nodiscard]] bool areTapsPrivateAt(const QQuickWindow& window, QPointF scene);

}  // namespace merovanta::quick
