#include "Qt/Quick/PopupsQuick.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include "Qt/Quick/PaintOrderQuick.h"

namespace merovanta::quick {

// The classes of Controls are asked for by name: the module may well not be there.

QObject* popupShownBy(const QObject& item) {
    QObject* const parent = item.parent();
    const bool isPopupItem = parent != nullptr && item.inherits("QQuickPopupItem");
    return isPopupItem && parent->inherits("QQuickPopup") ? parent : nullptr;
}

QObject* topmostModalPopup(const QQuickWindow& window) {
    const auto layers = inPaintOrder(*window.contentItem());
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        if (!(*layer)->inherits("QQuickOverlay")) continue;
        const auto items = inPaintOrder(**layer);
        for (auto item = items.rbegin(); item != items.rend(); ++item) {
            QObject* const popup = (*item)->isVisible() ? popupShownBy(**item) : nullptr;
            if (popup != nullptr && popup->property("modal").toBool()) return popup;
        }
    }
    return nullptr;
}

QQuickWindow* topmostChildWindow(const QQuickWindow& window) {
    const auto windows = QGuiApplication::topLevelWindows();
    for (auto candidate = windows.rbegin(); candidate != windows.rend(); ++candidate) {
        auto* const child = qobject_cast<QQuickWindow*>(*candidate);
        if (child == nullptr || !child->isVisible() || child->transientParent() != &window) continue;
        const bool isScreen = child->type() == Qt::Window || child->type() == Qt::Dialog ||
                              child->type() == Qt::Sheet || child->type() == Qt::Drawer;
        if (isScreen) return child;
    }
    return nullptr;
}

}  // namespace merovanta::quick
