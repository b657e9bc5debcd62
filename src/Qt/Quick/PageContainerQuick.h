#pragma once

class QQuickItem;

namespace merovanta::quick {

/// The item that a loader stands for, through any number of loaders: the item itself if it is no loader, null
/// if a loader is empty.
[[nodiscard]] QQuickItem* loadedItem(QQuickItem* item);

/// The StackView, SwipeView or StackLayout that fills this screen, or is the item itself: what the screen
/// shows is then that container's pages. Null if there is none.
[[nodiscard]] QQuickItem* pageContainer(QQuickItem* screen);

[[nodiscard]] bool isStackView(const QQuickItem& item);

}  // namespace merovanta::quick
