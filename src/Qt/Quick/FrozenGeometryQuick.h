#pragma once

#include <QtCore/QRectF>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/MaskArea.h"
#include "Qt/Quick/SightQuick.h"

class QQuickItem;
class QSGOpacityNode;
class QSGTransformNode;

namespace merovanta::quick {

/// Where the item tree says that private items are, kept to compare with where the scene graph paints them.
///
/// The two part company when animators (XAnimator, ScaleAnimator, …) run: these move the nodes of the scene
/// graph on the render thread and tell the item only when they are done. What has moved so is covered where
/// its nodes are; what has moved inside a layer, whose picture may be a frame older, is covered with all of
/// the layer.
class FrozenGeometryQuick {
 public:
    /// The sight of the window.
    explicit FrozenGeometryQuick(const SightQuick& window) : mWindow(window) {}

    // Call these after the scene graph was synchronised with the items, while the main thread stands still:

    /// Adds an item after the one that it lies in, and gives it a number.
    std::size_t add(const QQuickItem& item, const SightStepQuick& step, std::optional<std::size_t> parent);

    /// Adds what a private item of this number takes up, in its own coordinates; hidden if it is in something
    /// that lets nothing through.
    void addArea(std::size_t item, const std::optional<QRectF>& area, bool isHidden) {
        mAreas.push_back({area, item, isHidden});
    }

    /// Adds a node that lets nothing through.
    void addTransparent(const QSGOpacityNode& node) { mTransparent.push_back(&node); }

    /// Adds a node that lets everything through, of something that hides what is behind it.
    void addOpaque(const QSGOpacityNode& node) { mOpaque.push_back(&node); }

    // Call these before the next synchronisation, on the thread that renders:

    /// Takes note of what is not where its item was. To be called after the synchronisation and when the
    /// frame is painted: the animators move on in between.
    void compareWithScene();

    /// Whether anything was not.
    [[nodiscard]] bool hasMoved() const { return mHasMoved; }

    /// Where the private items are now painted.
    [[nodiscard]] std::vector<MaskArea> areasInScene() const;

 private:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Small: there may be thousands of them in each picture.
    struct Step {
        /// Null for what has not been painted.
        const QSGTransformNode* node = nullptr;
        std::uint32_t parent = none;
        /// In the list of details; most items have none, but are only shifted.
        std::uint32_t details = none;
        float x = 0;
        float y = 0;
        bool isOnPlane = false;
        bool hasMoved = false;
    };

    struct Details {
        SightStepQuick step;
        /// The item's bounds.
        QRectF bounds;
        /// The node that stands in for a layered item.
        const QSGTransformNode* standIn = nullptr;
    };

    struct Area {
        std::optional<QRectF> area;
        std::size_t step = 0;
        bool isHidden = false;
    };

    [[nodiscard]] SightStepQuick stepOf(const Step& step) const;
    [[nodiscard]] bool hasMoved(const Step& step) const;
    [[nodiscard]] std::vector<SightQuick> sightsInScene() const;
    /// As if all of the outermost layer in which it moves were private.
    [[nodiscard]] Area widened(Area area) const;

    SightQuick mWindow;
    std::vector<Step> mSteps;
    std::vector<Details> mDetails;
    std::vector<Area> mAreas;
    std::vector<const QSGOpacityNode*> mTransparent;
    std::vector<const QSGOpacityNode*> mOpaque;
    bool mHasMoved = false;
    bool mHasAppeared = false;
};

}  // namespace merovanta::quick
