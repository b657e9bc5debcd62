#pragma once

#include <QQuickItem>
#include <QQuickWindow>

// The first item of this name that is visible; null without one.
QQuickItem* findVisibleItem(const QQuickWindow& window, const QString& objectName);

// Whether a tap on the item reaches it: it is enabled, and no page it lies on is being turned.
bool isReady(const QQuickItem& item);
