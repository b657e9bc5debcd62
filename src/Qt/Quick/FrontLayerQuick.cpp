#include "Qt/Quick/FrontLayerQuick.h"

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>

#include "Qt/Quick/AlertQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/PopupsQuick.h"

namespace merovanta::quick {

void putInFront(QQuickItem& item, QQuickItem& parent, double z) {
    const QObject* popup = topmostModalPopup(*parent.window());
    // The library's own questions come first.
    if (popup != nullptr && AlertQuick::isAlert(*popup)) popup = nullptr;
    // All that shows of a popup, whose class is not known here.
    auto* const popupItem = popup == nullptr ? nullptr : popup->property("contentItem").value<QQuickItem*>();
    item.setZ(popupItem == nullptr ? z : zInFrontOfAll(parent));
    item.setParentItem(&parent);
    if (popupItem == nullptr) return;
    const auto goBehindPopups = [&item, z] { item.setZ(z); };
    QObject::connect(popupItem, &QQuickItem::visibleChanged, &item, [popupItem, goBehindPopups] {
        if (!popupItem->isVisible()) goBehindPopups();
    });
    QObject::connect(popupItem, &QObject::destroyed, &item, goBehindPopups);
    for (const QQuickItem* layer = popupItem->parentItem(); layer != nullptr; layer = layer->parentItem()) {
        if (layer->inherits("QQuickOverlay"))
            QObject::connect(layer, &QQuickItem::childrenChanged, &item, goBehindPopups);
    }
}

namespace {

/// Follows the popups of a window for an item that none of them is to cover.
class FrontKeeperQuick final : public QObject {
 public:
    FrontKeeperQuick(QQuickItem& item, double z) : QObject(&item), mItem(item), mZ(z) {
        QQuickItem* const content = item.window()->contentItem();
        connect(content, &QQuickItem::childrenChanged, this, &FrontKeeperQuick::findOverlay,
                Qt::QueuedConnection);
        findOverlay();
    }

 private:
    void findOverlay() {
        if (!mOverlay && mItem.window() != nullptr) {
            const auto layers = mItem.window()->contentItem()->childItems();
            for (QQuickItem* layer : layers) {
                if (!layer->inherits("QQuickOverlay")) continue;
                mOverlay = layer;
                // A popup that opens is there before it is visible.
                connect(layer, &QQuickItem::childrenChanged, this, &FrontKeeperQuick::place,
                        Qt::QueuedConnection);
            }
        }
        place();
    }

    void place() {
        const QObject* popup = nullptr;
        const auto items = mOverlay ? inPaintOrder(*mOverlay) : QList<QQuickItem*>();
        for (const QQuickItem* item : items) {
            const QObject* const shown = item->isVisible() ? popupShownBy(*item) : nullptr;
            if (shown != nullptr) popup = shown;
        }
        const bool isCovered = popup != nullptr && !AlertQuick::isAlert(*popup);
        mItem.setZ(isCovered ? inFrontOfSiblings() : mZ);
    }

    /// Something else of the library's may be in front of the popups already.
    [[nodiscard]] double inFrontOfSiblings() const {
        double front = mZ;
        const auto siblings = mItem.parentItem()->childItems();
        for (const QQuickItem* sibling : siblings) {
            if (sibling != &mItem) front = std::max(front, sibling->z());
        }
        return front + 1;
    }

    QQuickItem& mItem;
    const double mZ;
    QPointer<QQuickItem> mOverlay;
};

}  // namespace

void keepInFront(QQuickItem& item, QQuickItem& parent, double z) {
    item.setParentItem(&parent);
    new FrontKeeperQuick(item, z);
}

}  // namespace merovanta::quick
