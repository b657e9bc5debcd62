#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <memory>

#include "Platform/TapRecognizer.h"

class QMouseEvent;
class QQuickItem;
class QQuickWindow;
class QTouchEvent;

namespace merovanta::quick {

/// Watches a window's events from a filter that lets all of them pass: everything in the item is seen, in
/// the window's content item popups too, and the host application notices nothing.
class TapRecognizerQuick final : public QObject, public TapRecognizer {
 public:
    TapRecognizerQuick(TapRecognizerFactory::Action action, TapRecognizerFactory::Taps taps);
    ~TapRecognizerQuick() override;

    void attach(const View& view) override;
    void detach() override;
    [[nodiscard]] State state() const override { return mState; }
    [[nodiscard]] Point locationIn(const View& view) const override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    [[nodiscard]] bool isHeeded(const QMouseEvent& event) const;
    void mousePressed(const QMouseEvent& event);
    void mouseReleased(const QMouseEvent& event);
    void touched(const QTouchEvent& event);

    void press(QPointF position);
    void move(QPointF position);
    /// May destroy this object.
    void release(QPointF position);
    [[nodiscard]] bool isOnItem(QPointF position) const;
    void cancel() { mIsDown = false; }

    /// Shared, since the action may destroy the recogniser.
    std::shared_ptr<TapRecognizerFactory::Action> mAction;
    const TapRecognizerFactory::Taps mTaps;
    QPointer<QQuickItem> mItem;
    QPointer<QQuickWindow> mWindow;
    State mState = State::possible;
    bool mIsDown = false;
    QPointF mPressed;
    QPointF mTapped;
};

}  // namespace merovanta::quick
