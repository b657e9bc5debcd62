#include "Qt/Quick/WidgetViewQuick.h"

#include <QtGui/QAccessible>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>
// The public interface has no safe areas.
#include <qpa/qplatformwindow.h>

#include "Qt/Quick/FrontLayerQuick.h"
#include "Qt/Quick/InterfaceFileQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

constexpr qsizetype maximumText = 200;

const char* hiddenPropertyOf(WidgetView::Element element) {
    switch (element) {
        case WidgetView::Element::showButton:
            return "isShowButtonHidden";
        case WidgetView::Element::hideButton:
            return "isHideButtonHidden";
        case WidgetView::Element::buttonGroup:
            return "isButtonGroupHidden";
        case WidgetView::Element::chatButton:
            return "isChatButtonHidden";
    }
    return nullptr;
}

/// The part of the item that no notch and no system bar covers, in its own coordinates.
QRectF safeArea(const QQuickItem& item) {
    const QQuickWindow* const window = item.window();
    if (window == nullptr || window->handle() == nullptr) return item.boundingRect();
    const QRectF safe = QRectF({}, QSizeF(window->size())) - window->handle()->safeAreaMargins();
    return item.mapRectFromScene(safe) & item.boundingRect();
}

/// Has screen readers read the item out now.
void announce(QQuickItem* item) {
    if (item == nullptr || !item->isVisible()) return;
    QAccessibleEvent event(item, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace

WidgetViewQuick::WidgetViewQuick(Actions actions) : mActions(std::move(actions)) {}

WidgetViewQuick::~WidgetViewQuick() {
    delete mItem.data();
}

bool WidgetViewQuick::load(QQuickItem& parent) {
    QObject* const object = loadInterfaceFile(QStringLiteral("DefaultUIView.qml"), *parent.window(), parent);
    mItem = qobject_cast<QQuickItem*>(object);
    if (!mItem) {
        delete object;
        return false;
    }
    keepInFront(*mItem, parent, zOfWidget);
    connect(mItem, SIGNAL(hideClicked()), this, SLOT(hideClicked()), Qt::QueuedConnection);
    connect(mItem, SIGNAL(closeClicked()), this, SLOT(closeClicked()), Qt::QueuedConnection);
    connect(mItem, SIGNAL(openChat()), this, SLOT(openChat()), Qt::QueuedConnection);
    follow(parent);
    return true;
}

void WidgetViewQuick::follow(QQuickItem& parent) {
    QQuickWindow* const window = parent.window();
    connect(&parent, &QQuickItem::widthChanged, this, &WidgetViewQuick::layOut);
    connect(&parent, &QQuickItem::heightChanged, this, &WidgetViewQuick::layOut);
    connect(window, &QWindow::screenChanged, this, &WidgetViewQuick::followScreen);
    followScreen(window->screen());
}

void WidgetViewQuick::followScreen(QScreen* screen) {
    disconnect(mOrientation);
    // Turned upside down, the safe area changes and the size does not.
    if (screen != nullptr) {
        mOrientation = connect(screen, &QScreen::orientationChanged, this, &WidgetViewQuick::layOut,
                               Qt::QueuedConnection);
    }
    layOut();
}

void WidgetViewQuick::layOut() {
    if (!mItem || mItem->parentItem() == nullptr) return;
    mItem->setSize(mItem->parentItem()->size());
    mItem->setProperty("safeArea", safeArea(*mItem));
}

std::shared_ptr<View> WidgetViewQuick::view() const {
    return std::make_shared<ViewQuick>(mItem);
}

void WidgetViewQuick::setText(const std::string& text) {
    const QString bounded = boundedText(text, maximumText);
    if (!mItem || mItem->property("text") == bounded) return;
    mItem->setProperty("text", bounded);
    announce(mItem->findChild<QQuickItem*>(QStringLiteral("shareId")));
}

void WidgetViewQuick::setHidden(Element element, bool isHidden) {
    if (mItem) mItem->setProperty(hiddenPropertyOf(element), isHidden);
}

// Each works on a copy: it may destroy this object.

void WidgetViewQuick::hideClicked() {
    if (const auto action = mActions.hideClicked) action();
}

void WidgetViewQuick::closeClicked() {
    if (const auto action = mActions.closeClicked) action();
}

void WidgetViewQuick::openChat() {
    if (const auto action = mActions.openChat) action();
}

}  // namespace merovanta::quick
