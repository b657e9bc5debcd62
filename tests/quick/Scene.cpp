#include "Scene.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>

namespace merovanta::test {

Scene::Scene(const QString& qml) {
    QQmlComponent component(&mEngine);
    component.setData(
        "import QtQuick\nimport QtQuick.Window\nimport QtQuick.Controls\nimport "
        "QtQuick.Layouts\nimport Merovanta\n" +
            qml.toUtf8(),
        QUrl(QStringLiteral("qrc:/scenes/Main.qml")));
    mWindow.reset(qobject_cast<QQuickWindow*>(component.create()));
    if (!mWindow) qFatal("%s", qPrintable(component.errorString()));
    mWindow->resize(300, 400);
    mWindow->show();
    mWindow->requestActivate();
    if (!QTest::qWaitForWindowExposed(mWindow.get())) qFatal("The window does not show");
    // Popups and loaders take a turn; with a window manager or without, the key window is this one then.
    QTest::qWait(50);
}

QQuickItem* Scene::item(const QString& objectName) {
    return qobject_cast<QQuickItem*>(object(objectName));
}

QObject* Scene::object(const QString& objectName) {
    QObject* const found = mWindow->findChild<QObject*>(objectName);
    if (found == nullptr) qFatal("No %s", qPrintable(objectName));
    return found;
}

std::shared_ptr<ViewController> Scene::controller() {
    return platform::current().application().keyWindowRootViewController();
}

std::shared_ptr<View> Scene::root() {
    return controller()->view();
}

}  // namespace merovanta::test
