#pragma once

#include <QElapsedTimer>
#include <QPointF>
#include <QQuickWindow>

// Delivers to a window the input events that a finger and a keyboard would cause there.
class InputDriver {
 public:
    explicit InputDriver(QQuickWindow* window);

    // Positions are points in the window.
    void press(QPointF position);
    void move(QPointF position);
    void release(QPointF position);

    void type(QChar character);
    void strike(Qt::Key key);

 private:
    void sendMouse(QEvent::Type type, QPointF position, Qt::MouseButton button, Qt::MouseButtons buttons);
    void sendKey(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text);

    QQuickWindow* m_window;
    QElapsedTimer m_clock;
};
