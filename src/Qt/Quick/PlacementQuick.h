#pragma once

#include <QtGui/QMatrix4x4>

class QQuickItem;

namespace merovanta::quick {

/// The item's place in its parent, composed as the scene graph does it.
[[nodiscard]] QMatrix4x4 placementOf(const QQuickItem& item);

}  // namespace merovanta::quick
