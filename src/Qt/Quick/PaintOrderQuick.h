#pragma once

#include <QtCore/QList>

class QQuickItem;

namespace merovanta::quick {

/// The children of an item, back to front.
[[nodiscard]] QList<QQuickItem*> inPaintOrder(const QQuickItem& item);

/// Where Controls puts the layer of its popups is one higher.
constexpr double zBehindPopups = 1'000'000;

/// Where the library puts what it lays over the host application: the agent's drawings over the chat, the
/// widget over both.
constexpr double zOfCovers = zBehindPopups;
constexpr double zOfDrawings = zBehindPopups + 0.25;
constexpr double zOfWidget = zBehindPopups + 0.5;

/// Of a further child of this item that is to cover all others, popups too.
[[nodiscard]] double zInFrontOfAll(const QQuickItem& item);

}  // namespace merovanta::quick
