#pragma once

class QQuickItem;
class QQuickItemLayer;
class QQuickWindow;

namespace merovanta::quick {

/// Whether the item, or what is in it, may be on the screen, if its parent is: it is visible, or an effect
/// shows it in its stead. The pages that a stack or tabs keep behind the one in front are not, nor are a
/// list's spare rows.
[[nodiscard]] bool mayBePainted(const QQuickItem& item);

/// The layer that the item is painted into; null if it has none.
[[nodiscard]] const QQuickItemLayer* layerOf(const QQuickItem& item);

/// Whether the layer shows what is in the item in other places than where it is: another part of it,
/// mirrored, in coarser pixels, or as an effect.
[[nodiscard]] bool isRearranging(const QQuickItemLayer& layer, const QQuickItem& item);

/// Makes the software renderer paint the whole window in the frame now under way, not only what changed.
/// Without that, an item that moves entirely below an opaque one leaves its old picture behind, where nothing
/// masks it, and layers lag behind what is in them. For every other renderer, which paints each frame whole,
/// this does nothing. On the thread that renders.
void paintWhole(QQuickWindow& window);

}  // namespace merovanta::quick
