#include "Qt/Quick/SceneGraphQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <QtQuick/QSGTextureProvider>
#include <algorithm>
#include <vector>
// The public interface shows neither an item's use by effects nor a window's renderer.
#include <private/qquickitem_p.h>
#include <private/qquickshadereffectsource_p.h>
#include <private/qquickwindow_p.h>
#include <private/qsgabstractsoftwarerenderer_p.h>
#include <private/qsgadaptationlayer_p.h>

namespace merovanta::quick {

bool mayBePainted(const QQuickItem& item) {
    const QQuickItemPrivate* const details = QQuickItemPrivate::get(&item);
    // Culled are the rows that a list keeps out of sight, to be used again.
    if (details->explicitVisible && !details->culled) return true;
    const auto& extra = details->extra;
    if (!extra.isAllocated()) return false;
    // Its own layer is hidden with it.
    const int ownEffects = extra->layer != nullptr && extra->layer->effectSource() != nullptr ? 1 : 0;
    return extra->effectRefCount > ownEffects;
}

namespace {

struct Effect {
    QQuickShaderEffectSource* source = nullptr;
    int depth = 0;
};

int depthOf(const QQuickItem* item) {
    int depth = 0;
    for (; item != nullptr; item = item->parentItem())
        ++depth;
    return depth;
}

void addEffects(const QQuickItem& item, std::vector<Effect>& effects) {
    const auto children = item.childItems();
    for (QQuickItem* child : children) {
        auto* const source = qobject_cast<QQuickShaderEffectSource*>(child);
        if (source != nullptr && source->live() && QQuickItemPrivate::get(source)->paintNode != nullptr) {
            effects.push_back({source, depthOf(source->sourceItem())});
        }
        addEffects(*child, effects);
    }
}

/// By itself, the software renderer shows a layer as it was a frame ago, and one inside another as it was
/// longer ago.
void paintLayers(const QQuickWindow& window) {
    std::vector<Effect> effects;
    addEffects(*window.contentItem(), effects);
    // A layer inside another is that of a deeper item.
    std::stable_sort(effects.begin(), effects.end(),
                     [](const Effect& a, const Effect& b) { return a.depth > b.depth; });
    // They would ask for a further frame.
    std::vector<QSignalBlocker> quiet;
    quiet.reserve(effects.size());
    for (const Effect& effect : effects)
        quiet.emplace_back(effect.source->textureProvider()->texture());
    for (const Effect& effect : effects) {
        auto* const layer = qobject_cast<QSGLayer*>(effect.source->textureProvider()->texture());
        auto* const node =
            dynamic_cast<QSGInternalImageNode*>(QQuickItemPrivate::get(effect.source)->paintNode);
        if (layer == nullptr || node == nullptr) continue;
        layer->markDirtyTexture();
        node->preprocess();
        node->update();
    }
}

}  // namespace

const QQuickItemLayer* layerOf(const QQuickItem& item) {
    const auto& extra = QQuickItemPrivate::get(&item)->extra;
    const QQuickItemLayer* const layer = extra.isAllocated() ? extra->layer : nullptr;
    return layer != nullptr && layer->enabled() ? layer : nullptr;
}

bool isRearranging(const QQuickItemLayer& layer, const QQuickItem& item) {
    const bool isPart = !layer.sourceRect().isEmpty() && layer.sourceRect() != QRectF(QPointF(), item.size());
    // The software renderer shows layers in a wrong size at all other scales.
    const QQuickWindow* const window = item.window();
    const bool isMisplaced = window != nullptr && window->effectiveDevicePixelRatio() != 1 &&
                             window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    return isPart || isMisplaced || layer.textureMirroring() != QQuickShaderEffectSource::MirrorVertically ||
           !layer.size().isEmpty() || layer.effect() != nullptr;
}

void paintWhole(QQuickWindow& window) {
    if (window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software) return;
    paintLayers(window);
    auto* const renderer =
        dynamic_cast<QSGAbstractSoftwareRenderer*>(QQuickWindowPrivate::get(&window)->renderer);
    if (renderer != nullptr) renderer->markDirty();
}

}  // namespace merovanta::quick
