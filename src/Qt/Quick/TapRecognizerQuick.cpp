#include "Qt/Quick/TapRecognizerQuick.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtGui/QTouchEvent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "Qt/Quick/HitTestQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

TapRecognizerQuick::TapRecognizerQuick(TapRecognizerFactory::Action action, TapRecognizerFactory::Taps taps)
    : mAction(std::make_shared<TapRecognizerFactory::Action>(std::move(action))), mTaps(taps) {}

TapRecognizerQuick::~TapRecognizerQuick() {
    detach();
}

void TapRecognizerQuick::attach(const View& view) {
    detach();
    QQuickItem* const item = ViewQuick::itemOf(view);
    mItem = item;
    mWindow = item == nullptr ? nullptr : item->window();
    if (mWindow) mWindow->installEventFilter(this);
}

void TapRecognizerQuick::detach() {
    if (mWindow) mWindow->removeEventFilter(this);
    mWindow = nullptr;
    cancel();
}

Point TapRecognizerQuick::locationIn(const View& view) const {
    const QQuickItem* const item = ViewQuick::itemOf(view);
    if (item == nullptr) return {};
    const bool isElsewhere = mWindow && item->window() != nullptr && item->window() != mWindow;
    const QPointF place =
        isElsewhere ? item->mapFromGlobal(mWindow->mapToGlobal(mTapped)) : item->mapFromScene(mTapped);
    return {place.x(), place.y()};
}

bool TapRecognizerQuick::eventFilter(QObject* /*watched*/, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            mousePressed(static_cast<const QMouseEvent&>(*event));
            break;
        case QEvent::MouseMove:
            move(static_cast<const QMouseEvent*>(event)->position());
            break;
        case QEvent::MouseButtonRelease:
            mouseReleased(static_cast<const QMouseEvent&>(*event));
            break;
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
            touched(static_cast<const QTouchEvent&>(*event));
            break;
        case QEvent::TouchCancel:
            cancel();
            break;
        default:
            break;
    }
    return false;
}

// A touch that comes a second time as a mouse has been seen already.
bool TapRecognizerQuick::isHeeded(const QMouseEvent& event) const {
    const bool isPlayedBack = event.source() == Qt::MouseEventSynthesizedByApplication;
    return event.source() == Qt::MouseEventNotSynthesized ||
           (isPlayedBack && mTaps == TapRecognizerFactory::Taps::everyones);
}

void TapRecognizerQuick::mousePressed(const QMouseEvent& event) {
    if (!isHeeded(event)) return;
    if (event.buttons() == Qt::LeftButton) {
        press(event.position());
    } else {
        cancel();
    }
}

void TapRecognizerQuick::mouseReleased(const QMouseEvent& event) {
    if (!isHeeded(event)) return;
    if (event.button() == Qt::LeftButton) release(event.position());
}

void TapRecognizerQuick::touched(const QTouchEvent& event) {
    if (event.points().size() != 1) return cancel();
    const QEventPoint& finger = event.points().first();
    switch (finger.state()) {
        case QEventPoint::Pressed:
            return press(finger.position());
        case QEventPoint::Updated:
            return move(finger.position());
        case QEventPoint::Released:
            return release(finger.position());
        default:
            return;
    }
}

void TapRecognizerQuick::press(QPointF position) {
    mIsDown = true;
    mPressed = position;
}

void TapRecognizerQuick::move(QPointF position) {
    const QPointF way = position - mPressed;
    const double limit = QGuiApplication::styleHints()->startDragDistance();
    if (QPointF::dotProduct(way, way) > limit * limit) cancel();
}

bool TapRecognizerQuick::isOnItem(QPointF position) const {
    if (!mItem || !mItem->contains(mItem->mapFromScene(position))) return false;
    const QQuickItem* const taker = mWindow ? takerAt(*mWindow, position) : nullptr;
    // What lies over the item, such as a dialog, has taps of its own.
    return taker == nullptr || taker == mItem || mItem->isAncestorOf(taker) || taker->isAncestorOf(mItem);
}

void TapRecognizerQuick::release(QPointF position) {
    move(position);
    if (!mIsDown) return;
    mIsDown = false;
    if (!isOnItem(position)) return;
    mTapped = position;
    mState = State::ended;
    const QPointer<TapRecognizerQuick> self(this);
    const auto action = mAction;
    (*action)(*this);
    if (self) mState = State::possible;
}

}  // namespace merovanta::quick
