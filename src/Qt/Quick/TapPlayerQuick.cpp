#include "Qt/Quick/TapPlayerQuick.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <chrono>

#include "Qt/Quick/AlertQuick.h"
#include "Qt/Quick/FileChoiceQuick.h"
#include "Qt/Quick/HitTestQuick.h"
#include "Qt/Quick/PopupsQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

/// A device of its own keeps the taps apart from what the visitor's mouse is doing. It stays for good:
/// handlers remember the device of the last tap.
const QPointingDevice& device() {
    static const auto* const device =
        new QPointingDevice(QStringLiteral("agent"), 0, QInputDevice::DeviceType::Mouse,
                            QPointingDevice::PointerType::Generic, QInputDevice::Capability::Position, 1, 1);
    return *device;
}

bool isOnlyForVisitor(const QQuickWindow& window) {
    const QWindow* const modal = QGuiApplication::modalWindow();
    if (modal != nullptr && modal != &window && !modal->isAncestorOf(&window)) return true;
    if (FileChoiceQuick::isOpen(window)) return true;
    const QObject* const popup = topmostModalPopup(window);
    return popup != nullptr && AlertQuick::isAlert(*popup);
}

/// By a property of the item or of one around it.
bool isOnlyForVisitor(const QQuickItem* item) {
    while (item != nullptr && !item->property("isMerovantaVisitorsOwn").toBool())
        item = item->parentItem();
    return item != nullptr;
}

void send(QQuickWindow& window, QEvent::Type type, QPointF scene) {
    const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    // The source tells recognisers that it was not the visitor.
    QMouseEvent event(type, scene, scene, window.mapToGlobal(scene), Qt::LeftButton, buttons, Qt::NoModifier,
                      Qt::MouseEventSynthesizedByApplication, &device());
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    event.setTimestamp(
        static_cast<quint64>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
    QCoreApplication::sendEvent(&window, &event);
}

}  // namespace

bool TapPlayerQuick::tap(const View& root, const Point& point) {
    const QQuickItem* const item = ViewQuick::itemOf(root);
    QQuickWindow* const window = item == nullptr ? nullptr : item->window();
    if (mIsTapping || window == nullptr || !window->isVisible() || isOnlyForVisitor(*window)) return false;
    // True for no NaN.
    const bool isInside = point.x >= 0 && point.x < item->width() && point.y >= 0 && point.y < item->height();
    if (!isInside) return false;
    const QPointF scene = item->mapToScene({point.x, point.y});
    const QQuickItem* const taker = takerAt(*window, scene);
    if (taker == nullptr || isOnlyForVisitor(taker)) return false;
    const QScopedValueRollback tapping(mIsTapping, true);
    const QPointer<QQuickWindow> alive(window);
    send(*window, QEvent::MouseButtonPress, scene);
    if (alive) send(*window, QEvent::MouseButtonRelease, scene);
    return true;
}

}  // namespace merovanta::quick
