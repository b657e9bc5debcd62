#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QRectF>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/MaskArea.h"
#include "Platform/MaskJudge.h"
#include "Qt/Quick/FrozenGeometryQuick.h"
#include "Qt/Quick/GroundsQuick.h"
#include "Qt/Quick/ItemClassesQuick.h"
#include "Qt/Quick/SightQuick.h"

class QQuickItem;
class QQuickWindow;

namespace merovanta::quick {

struct MarksQuick;

/// One walk over all items of a window that finds what is private in it and where that shows in the picture.
///
/// Call it after the scene graph was synchronised with the items, while the main thread stands still.
class MaskWalkQuick {
 public:
    /// The window and the judge must outlive this.
    MaskWalkQuick(const QQuickWindow& window, MaskJudge& judge);

    void run();

    /// The areas, in the order of painting; those of effects come last.
    [[nodiscard]] std::vector<MaskArea> takeAreas() { return std::move(mAreas); }

    /// Where the items lie that the areas depend on, and those that show if something moves.
    [[nodiscard]] FrozenGeometryQuick takeGeometry() { return std::move(mGeometry); }

 private:
    /// An item between the root and the one that the walk is at.
    struct Step {
        QQuickItem* item = nullptr;
        /// Computed when it is first needed, and then put into the frozen geometry under this number.
        bool isPlaced = false;
        SightQuick sight;
        std::size_t frozen = 0;
        /// Whether something private is in it, or it is private itself.
        bool isPrivate = false;
        /// What is black around it already, for a private item that it is in. In pixels.
        QRectF covered;
    };

    /// Of an area: whether others cover it too, as long as nothing is exempt; and how many grounds are behind
    /// it.
    struct Note {
        bool isRedundant = false;
        std::size_t grounds = 0;
    };

    /// An item that shows what other items show.
    struct Effect {
        QQuickItem* item = nullptr;
        std::vector<QQuickItem*> sources;
        /// In its own coordinates, and in pixels.
        std::optional<QRectF> painted;
        QRectF area;
        std::size_t frozen = 0;
        std::size_t grounds = 0;
        bool isPainted = true;
        bool isCovered = false;
    };

    void visit(QQuickItem& item, bool isPainted);
    void visitChildren(QQuickItem& item, bool isPainted);
    MaskVerdict judge(const QQuickItem& item, const ItemClassQuick& type, const MarksQuick* marks,
                      bool isAgain);
    void cover(const QQuickItem& item, const ItemClassQuick& type, const MaskVerdict& verdict, bool isShown);
    void exempt(const QQuickItem& item);
    void addFixed(const QQuickItem& item, const MaskVerdict& verdict);
    void addArea(const QRectF& rect, MaskArea::Kind kind, const MaskVerdict& verdict, const Note& note);
    void addGround(const QQuickItem& item);
    [[nodiscard]] bool isTransparent(const QQuickItem& item) const;

    /// Computes the sight of the last step, and of those before.
    Step& placed();
    void placeStep(std::size_t index);

    [[nodiscard]] std::vector<QQuickItem*> sourcesOf(QQuickItem& item, const ItemClassQuick& type) const;
    void addEffect(QQuickItem& item, std::vector<QQuickItem*> sources, bool isPainted);
    void visitLayerEffects(const QList<QQuickItem*>& siblings, bool isPainted);
    void noteLayerEffects(const QList<QQuickItem*>& siblings);
    void coverEffects();
    void noteCovered(const QQuickItem& effect);
    bool showsPrivate(QQuickItem& source);
    bool isPrivateWithin(QQuickItem& item, bool isAgain, std::vector<QQuickItem*>& sources);
    void dropWhatDoesNotShow();

    const QQuickWindow& mWindow;
    MaskJudge& mJudge;
    ItemClassesQuick mClasses;
    const bool mIsSoftware;
    const SightQuick mWindowSight;
    std::vector<Step> mSteps;
    std::vector<MaskArea> mAreas;
    /// One for each area.
    std::vector<Note> mNotes;
    GroundsQuick mGrounds;
    FrozenGeometryQuick mGeometry{mWindowSight};
    std::vector<Effect> mEffects;
    /// For the items that effects show whether anything in them is private.
    QHash<const QQuickItem*, bool> mSources;
    /// The items that show a layer's effect, and the items that have the layer.
    QHash<const QQuickItem*, QQuickItem*> mLayerEffects;
    /// Of a popup's or window's item with its owner; kept here for its memory.
    std::vector<std::size_t> mEntries;
};

}  // namespace merovanta::quick
