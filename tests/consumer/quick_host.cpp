// The three lines that a Qt Quick host adds, in a window that closes itself.
#include <Merovanta/Merovanta.h>
#include <Merovanta/Quick.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTimer>

int main(int argc, char** argv) {
    merovanta::quick::initialize();
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nimport Merovanta\nWindow { visible: true; Item { Merovanta.tag: 12 } }");
    if (engine.rootObjects().isEmpty()) return 1;
    merovanta::Merovanta::initConfig("tenant", "token");
    merovanta::Merovanta::panoptra().start();
    QTimer::singleShot(500, &app, &QCoreApplication::quit);
    return QGuiApplication::exec();
}
