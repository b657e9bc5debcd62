#include "InputDriver.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

InputDriver::InputDriver(QQuickWindow* window) : m_window(window) {
    m_clock.start();
}

void InputDriver::press(QPointF position) {
    sendMouse(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
    sendMouse(QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
}

void InputDriver::move(QPointF position) {
    sendMouse(QEvent::MouseMove, position, Qt::NoButton, Qt::LeftButton);
}

void InputDriver::release(QPointF position) {
    sendMouse(QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
}

void InputDriver::type(QChar character) {
    const auto key = static_cast<Qt::Key>(character.toUpper().unicode());
    sendKey(key, character.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, character);
}

void InputDriver::strike(Qt::Key key) {
    sendKey(key, Qt::NoModifier, QString());
}

void InputDriver::sendMouse(QEvent::Type type, QPointF position, Qt::MouseButton button,
                            Qt::MouseButtons buttons) {
    QMouseEvent event(type, position, position, m_window->mapToGlobal(position), button, buttons,
                      Qt::NoModifier);
    // A list takes the speed of a flick from the time stamps.
    event.setTimestamp(static_cast<quint64>(m_clock.elapsed()));
    QCoreApplication::sendEvent(m_window, &event);
}

void InputDriver::sendKey(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(m_window, &event);
    }
}
