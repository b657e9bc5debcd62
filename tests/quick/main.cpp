#include <Merovanta/QuickChat.h>
#include <gtest/gtest.h>

#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <cstdlib>
#include <cstring>

#include "EarlyBird.h"
#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "RogueServer.h"
#include "Scene.h"
#include "qt/SocketPeerQt.h"

using merovanta::platform::current;
using merovanta::test::RogueServer;

namespace merovanta::test {

EarlyBird& earlyBird() {
    static EarlyBird bird;
    return bird;
}

}  // namespace merovanta::test

namespace {

void askEarly() {
    auto& bird = merovanta::test::earlyBird();
    current().mainQueue().async([&] { bird.task = true; });
    bird.handle =
        current().timers().schedule(std::chrono::milliseconds(1), false, [&] { bird.timer = true; });
    bird.socket = current().webSockets().create({.url = "nowhere"}, {.didDisconnect = [&](const auto& error) {
                                                    bird.socketError = error.has_value();
                                                }});
    bird.socket->connect();
    current().httpSession().execute({.url = "nowhere"},
                                    [&](const merovanta::HttpReply&) { bird.completion = true; });
}

void useEverything() {
    current().mainQueue().async([] {});
    current().workQueue().async([] { QThread::msleep(50); });
    current().httpSession().execute({.url = "http://127.0.0.1:1/"}, [](const merovanta::HttpReply&) {});
    const auto resign = current().application().observeWillResignActive([] {});
    const auto dropped = current().webSockets().create({.url = "ws://127.0.0.1:1/"}, {});
    dropped->connect();
    current().userDefaults().set("key", "value");
    current().userDefaults().synchronize();
    current().application().keyWindowRootViewController();
    current().application().identifierForVendor();
    current().application().mainScreen();
    static_cast<void>(current().application().classesExist({"Item"}));
}

/// The application ends while every port is busy, and they are used once more when it is gone.
int endInTheMiddle(int argc, char** argv) {
    std::unique_ptr<merovanta::Timer> timer;
    std::shared_ptr<merovanta::View> view;
    std::unique_ptr<merovanta::TapRecognizer> recognizer;
    std::unique_ptr<merovanta::WebSocket> socket;
    std::unique_ptr<merovanta::CoverView> cover;
    std::unique_ptr<merovanta::WebView> webView;
    std::unique_ptr<merovanta::DocumentPreview> preview;
    const auto judge = std::make_shared<merovanta::PrivacyJudge>(
        std::make_shared<merovanta::PrivacyRules>(std::nullopt, merovanta::PrivacySettings()));
    {
        const QGuiApplication application(argc, argv);
        merovanta::test::Scene scene("ApplicationWindow {}");
        const RogueServer server("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf",
                                 RogueServer::Afterwards::keepOpen);
        view = scene.root();
        recognizer = current().tapRecognizers().create([](const merovanta::TapRecognizer&) {},
                                                       merovanta::TapRecognizerFactory::Taps::visitors);
        recognizer->attach(*view);
        timer = current().timers().schedule(std::chrono::milliseconds(1), true, [] {});
        current().httpSession().execute({.url = server.url()}, [](const merovanta::HttpReply&) {});
        const merovanta::test::SocketPeerQt peer;
        bool isOpen = false;
        socket = current().webSockets().create(
            {.url = peer.url()},
            {.didConnect = [&] { isOpen = true; }, .didDisconnect = [](const auto&) { std::abort(); }});
        socket->connect();
        if (!merovanta::test::eventually([&] { return isOpen; })) return 1;
        cover = current().coverViews().create(*view, "ChatView", {});
        webView = current().webViews()->create(*cover->view(), {"openDocument"}, {});
        webView->load(server.url());
        QTest::qWait(50);
        preview = current().documentPreviews()->create();
        preview->present(*scene.controller(), MEROVANTA_TEST_CERTIFICATE);
        webView->evaluateJavaScript("1", [](const auto&) {});
        useEverything();
        current().screenCapture().capture(view, {}, judge,
                                          [](const std::optional<merovanta::CapturedFrame>&) {});
    }
    socket->write("late");
    socket->disconnect(1000);
    webView->load("http://127.0.0.1:1/");
    webView->evaluateJavaScript("1", [](const auto&) { std::abort(); });
    useEverything();
    current().screenCapture().capture(view, {}, judge, [](const auto&) {});
    auto late = current().timers().schedule(std::chrono::milliseconds(1), false, [] {});
    return 0;
}

/// Somebody else's window, which takes the focus.
int showAWindow(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QWindow window;
    window.showMaximized();
    return QGuiApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName("Test Vendor");
    QCoreApplication::setApplicationName("quick_test");
    if (argc > 1 && std::strcmp(argv[1], "--show-a-window") == 0) return showAWindow(argc, argv);
    merovanta::quick::initializeChat();
    if (argc > 1 && std::strcmp(argv[1], "--end-in-the-middle") == 0) return endInTheMiddle(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    askEarly();
    const QGuiApplication application(argc, argv);
    // Tests close their only window all the time.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
