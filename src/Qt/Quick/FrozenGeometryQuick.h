#pragma once

#include <QtGui/QMatrix4x4>
#include <vector>

class QQuickItem;
class QSGTransformNode;

namespace merovanta::quick {

/// Where the item tree says that some items are, kept to compare with where the scene graph paints them.
///
/// The two part company when animators (XAnimator, ScaleAnimator, …) run: these move the nodes of the scene
/// graph on the render thread and tell the item only when they are done.
class FrozenGeometryQuick {
 public:
    /// Adds the item and all that it lies in. Call it after the scene graph was synchronised with the items,
    /// while the main thread stands still.
    void add(QQuickItem& item);

    /// Whether the nodes are now where the items were. Until the next synchronisation, on the thread that
    /// renders.
    [[nodiscard]] bool matchesScene() const;

 private:
    struct Placement {
        const QSGTransformNode* node = nullptr;
        QMatrix4x4 expected;
    };

    void addOne(QQuickItem& item);

    std::vector<const QQuickItem*> mSeen;
    std::vector<Placement> mPlacements;
};

}  // namespace merovanta::quick
