// The lines that a Qt Quick host adds, in a window that closes itself: quick_host [HOST:PORT of a service].
// Checks whether the chat is there and, with a service, that the screen is shared.
#include <Merovanta/Merovanta.h>
#ifdef WITH_CHAT
#include <Merovanta/QuickChat.h>
#else
#include <Merovanta/Quick.h>
#endif

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTimer>

int main(int argc, char** argv) {
#ifdef WITH_CHAT
    const bool isChatExpected = true;
    merovanta::quick::initializeChat();
#else
    const bool isChatExpected = false;
    merovanta::quick::initialize();
#endif
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nimport Merovanta\nWindow { visible: true; Item { Merovanta.tag: 12 } }");
    if (engine.rootObjects().isEmpty()) return 1;
    merovanta::CustomConfiguration configuration("tenant", "token");
    if (argc > 1) configuration.setServerUrl(argv[1]);
    merovanta::Merovanta::initConfig(configuration);
    bool isShared = argc < 2;
    const auto observation = merovanta::Merovanta::panoptra().observe(
        [&](const auto& status) { isShared |= status.state == merovanta::SessionState::sharing; });
    merovanta::Merovanta::panoptra().start();
    bool hasChat = true;
    merovanta::Merovanta::webChat().open(
        "1", [&](const auto& error) { hasChat = error != "This application is built without the chat"; });
    QTimer::singleShot(argc > 1 ? 4000 : 500, &app, &QCoreApplication::quit);
    const int code = QGuiApplication::exec();
    if (hasChat != isChatExpected) return 2;
    return isShared ? code : 3;
}
