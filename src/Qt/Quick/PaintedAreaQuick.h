#pragma once

#include <QtCore/QRectF>
#include <QtGui/QMatrix4x4>
#include <optional>

class QQuickItem;

namespace merovanta::quick {

struct ItemClassQuick;

/// Where the item itself paints, in its own coordinates: its bounds, and what its nodes in the scene graph
/// paint outside of them. Absent if that cannot be told. Call it after the scene graph was synchronised with
/// the items, while the main thread stands still.
[[nodiscard]] std::optional<QRectF> paintedArea(const QQuickItem& item, const ItemClassQuick& type,
                                                bool isSoftware);

/// Whether the matrix does nothing else; true of what nearly all items are placed by.
[[nodiscard]] bool isShiftOrScale(const QMatrix4x4& matrix);

/// The smallest upright rectangle around what the matrix makes of this one; absent if it reaches behind the
/// viewer or is no place at all.
[[nodiscard]] std::optional<QRectF> mapped(const QMatrix4x4& matrix, const QRectF& rect);

}  // namespace merovanta::quick
