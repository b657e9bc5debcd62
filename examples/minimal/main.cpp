#include <Merovanta/Merovanta.h>
#include <Merovanta/Quick.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv) {
    merovanta::quick::initialize();
    QGuiApplication app(argc, argv);
    merovanta::Merovanta::initConfig("tenant", "token");
    const QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
