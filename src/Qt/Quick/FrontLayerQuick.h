#pragma once

class QQuickItem;

namespace merovanta::quick {

/// Makes the item a child of the parent, which is in a window, at this place behind the popups. If one is
/// open now, the item is in front of it and all else until it closes; popups that open later cover the item,
/// as they cover everything else.
void putInFront(QQuickItem& item, QQuickItem& parent, double z);

/// Makes the item a child of the parent, which is in a window, in front of all popups, those too that open
/// later, but for the library's own questions. While there are none it is at this place.
void keepInFront(QQuickItem& item, QQuickItem& parent, double z);

}  // namespace merovanta::quick
