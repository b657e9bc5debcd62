#include "Qt/Quick/CoverViewQuick.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
// The public interface has no way to keep the tab key inside of an item.
#include <private/qquickitem_p.h>

#include <utility>

#include "Qt/Quick/FrontLayerQuick.h"
#include "Qt/Quick/InterfaceFileQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

bool isInPopup(const QQuickItem* item) {
    while (item != nullptr && !item->inherits("QQuickOverlay"))
        item = item->parentItem();
    return item != nullptr;
}

}  // namespace

CoverViewQuick::CoverViewQuick(std::function<void()> dismissed) : mDismissed(std::move(dismissed)) {}

CoverViewQuick::~CoverViewQuick() {
    const bool hadFocus = mItem && mItem->hasActiveFocus();
    delete mItem.data();
    if (hadFocus && mFocus) mFocus->forceActiveFocus(Qt::OtherFocusReason);
}

bool CoverViewQuick::lay(QQuickItem& parent, const QString& className) {
    QObject* const object =
        loadInterfaceFile(QStringLiteral("CoverView.qml"), *parent.window(), parent, {}, className);
    mItem = qobject_cast<QQuickItem*>(object);
    if (!mItem) {
        delete object;
        return false;
    }
    QQuickItemPrivate::get(mItem)->isTabFence = true;
    mFocus = parent.window()->activeFocusItem();
    putInFront(*mItem, parent, zOfCovers);
    mItem->forceActiveFocus(Qt::OtherFocusReason);
    // A popup that closes gives the focus to the screen behind.
    connect(parent.window(), &QQuickWindow::activeFocusItemChanged, this, &CoverViewQuick::holdFocus,
            Qt::QueuedConnection);
    connect(mItem, SIGNAL(dismissed()), this, SLOT(dismissed()), Qt::QueuedConnection);
    connect(mItem, &QObject::destroyed, this, &CoverViewQuick::dismissed, Qt::QueuedConnection);
    return true;
}

void CoverViewQuick::holdFocus() {
    const QQuickItem* const focus = mItem && mItem->window() ? mItem->window()->activeFocusItem() : nullptr;
    const bool isElsewhere = focus != nullptr && focus != mItem && !mItem->isAncestorOf(focus);
    if (isElsewhere && !isInPopup(focus)) mItem->forceActiveFocus(Qt::OtherFocusReason);
}

// Works on a copy: it may destroy this object.
void CoverViewQuick::dismissed() {
    if (const auto action = mDismissed) action();
}

std::shared_ptr<View> CoverViewQuick::view() const {
    return std::make_shared<ViewQuick>(mItem);
}

}  // namespace merovanta::quick
