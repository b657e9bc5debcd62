#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <memory>
#include <string_view>

#include "Platform/Platform.h"

namespace merovanta::test {

/// Handles events until the condition holds; false if it does not within the time.
template <typename Condition>
bool eventually(Condition condition, int milliseconds = 5000) {
    // Without pauses between the events: the web engine's work comes in thousands of them.
    const QDeadlineTimer deadline(milliseconds);
    QTimer waker;
    waker.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// A window made of QML text, whose neighbours are the files in qml/. Its class is "Main".
class Scene {
 public:
    explicit Scene(const QString& qml);

    [[nodiscard]] QQuickWindow& window() { return *mWindow; }
    [[nodiscard]] QQuickItem* item(const QString& objectName);
    [[nodiscard]] QObject* object(const QString& objectName);
    void close() { mWindow.reset(); }

    [[nodiscard]] std::shared_ptr<ViewController> controller();
    [[nodiscard]] std::shared_ptr<View> root();

 private:
    QQmlEngine mEngine;
    std::unique_ptr<QQuickWindow> mWindow;
};

}  // namespace merovanta::test
