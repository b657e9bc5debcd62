#pragma once

class QQuickItem;
class QQuickWindow;

namespace merovanta::quick {

/// Whether the item, or what is in it, may be on the screen, if its parent is: it is visible, or an effect
/// shows it in its stead. The pages that a stack or tabs keep behind the one in front are not, nor are a
/// list's spare rows.
[[nodiscard]] bool mayBePainted(const QQuickItem& item);

/// The outermost item whose layer shows what is in it, this item too, in other places than where the items
/// are: another part of it, or mirrored. Null without one.
[[nodiscard]] QQuickItem* rearrangingLayer(QQuickItem& item);

/// Makes the software renderer paint the whole window in the frame now under way, not only what changed.
/// Without that, an item that moves entirely below an opaque one leaves its old picture behind, where nothing
/// masks it, and layers lag behind what is in them. For every other renderer, which paints each frame whole,
/// this does nothing. On the thread that renders.
void paintWhole(QQuickWindow& window);

}  // namespace merovanta::quick
