#pragma once

#include <QtCore/QObject>

class QQuickWindow;

namespace merovanta::quick {

/// The popup (dialog, drawer, menu) that this item shows in the window's overlay; null if it shows none.
[[nodiscard]] QObject* popupShownBy(const QObject& item);

/// The topmost visible modal popup of the window; null if there is none.
[[nodiscard]] QObject* topmostModalPopup(const QQuickWindow& window);

/// The topmost visible window that belongs to this one, such as a dialog; null if there is none.
[[nodiscard]] QQuickWindow* topmostChildWindow(const QQuickWindow& window);

}  // namespace merovanta::quick
