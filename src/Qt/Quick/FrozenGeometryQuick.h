#pragma once

#include <QtGui/QMatrix4x4>
#include <vector>

class QQuickItem;
class QSGOpacityNode;
class QSGTransformNode;

namespace merovanta::quick {

/// Where the item tree says that some items are, kept to compare with where the scene graph paints them.
///
/// The two part company when animators (XAnimator, ScaleAnimator, …) run: these move the nodes of the scene
/// graph on the render thread and tell the item only when they are done.
class FrozenGeometryQuick {
 public:
    /// Adds the item, without what it lies in. Call it after the scene graph was synchronised with the items,
    /// while the main thread stands still.
    void add(const QQuickItem& item);

    /// Adds a node that lets nothing through.
    void addTransparent(const QSGOpacityNode& node);

    void add(const FrozenGeometryQuick& other);

    /// Whether the nodes are now where the items were, and still let nothing through. Until the next
    /// synchronisation, on the thread that renders.
    [[nodiscard]] bool matchesScene() const;

 private:
    struct Placement {
        const QSGTransformNode* node = nullptr;
        QMatrix4x4 expected;
    };

    std::vector<Placement> mPlacements;
    std::vector<const QSGOpacityNode*> mTransparent;
};

}  // namespace merovanta::quick
