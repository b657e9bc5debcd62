#include "Qt/Quick/SceneGraphQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
// The public interface shows neither an item's use by effects nor a window's renderer.
#include <private/qquickitem_p.h>
#include <private/qquickwindow_p.h>
#include <private/qsgabstractsoftwarerenderer_p.h>

namespace merovanta::quick {

bool mayBePainted(const QQuickItem& item) {
    if (item.isVisible()) return true;
    const auto& extra = QQuickItemPrivate::get(&item)->extra;
    return extra.isAllocated() && extra->recursiveEffectRefCount > 0;
}

void paintWhole(QQuickWindow& window) {
    if (window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software) return;
    auto* const renderer =
        dynamic_cast<QSGAbstractSoftwareRenderer*>(QQuickWindowPrivate::get(&window)->renderer);
    if (renderer != nullptr) renderer->markDirty();
}

}  // namespace merovanta::quick
