#pragma once

#include <QQuickItem>
#include <QQuickWindow>

// The first item of this name that is visible; null without one.
QQuickItem* findVisibleItem(const QQuickWindow& window, const QString& objectName);
