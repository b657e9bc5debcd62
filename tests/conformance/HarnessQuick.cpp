#include <Merovanta/QuickChat.h>

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include "Harness.h"
#include "qt/PageServer.h"
#include "qt/SocketPeerQt.h"

namespace merovanta::conformance {

namespace {

/// The views stand in another order in the text than on the screen.
constexpr auto window = R"(
    import QtQuick
    import QtQuick.Controls
    import Merovanta
    Window {
        id: main
        width: 300; height: 400; visible: true; color: "white"
        component Field: Rectangle { width: 60; height: 30 }
        component SecretField: Field { color: "red" }
        component Card: Rectangle {}
        component HostButton: Rectangle { color: "gray" }
        component HomePage: Item {}
        component DetailPage: Item {}
        component PinDialog: Dialog {}
        %1
    })";

constexpr auto views = R"(
    HostButton {
        x: 20; y: 300; z: 1; width: 100; height: 50
        MouseArea { objectName: "host"; property int taps; anchors.fill: parent; onClicked: ++taps }
    }
    Card {
        objectName: "1"; x: 20; y: 40; width: 200; height: 200; color: "blue"; Merovanta.tag: 1
        Field { objectName: "3"; x: 40; y: 30; z: 1; color: "green"; Merovanta.tag: 3 }
        SecretField { objectName: "2"; x: 10; y: 20; Merovanta.tag: 2 }
    })";

constexpr auto presenting = "PinDialog { modal: true; visible: true }";

constexpr auto navigation = R"(
    StackView {
        id: stack; anchors.fill: parent; initialItem: HomePage {}
        Component { id: detail; DetailPage {} }
        Component.onCompleted: push(detail, StackView.Immediate)
    })";

constexpr auto tabs = "SwipeView { anchors.fill: parent; currentIndex: 1; HomePage {} DetailPage {} }";

const char* contentOf(Page page) {
    switch (page) {
        case Page::views:
            return views;
        case Page::presenting:
            return presenting;
        case Page::navigation:
            return navigation;
        case Page::tabs:
            return tabs;
    }
    return "";
}

class HarnessQuick : public Harness {
 public:
    Platform& platform() override { return platform::current(); }

    bool passUntil(const std::function<bool()>& condition) override {
        return QTest::qWaitFor(condition, 20'000);
    }
    void pass(std::chrono::milliseconds duration) override {
        QTest::qWait(static_cast<int>(duration.count()));
    }
    std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
    void stall(std::chrono::milliseconds duration) override {
        QTest::qSleep(static_cast<int>(duration.count()));
    }

    void show(Page page) override {
        QQmlComponent component(&mEngine);
        component.setData(QString(window).arg(contentOf(page)).toUtf8(),
                          QUrl(QStringLiteral("qrc:/conformance/Main.qml")));
        close();
        mWindow.reset(qobject_cast<QQuickWindow*>(component.create()));
        if (!mWindow) qFatal("%s", qPrintable(component.errorString()));
        mWindow->requestActivate();
        const bool isShown = passUntil([this] {
            const auto key = platform().application().keyWindowRootViewController();
            return mWindow->isExposed() && key && key->view()->identity() == mWindow->contentItem();
        });
        if (!isShown) qFatal("The window does not show");
        paint();
    }
    void move(long tag, const Point& origin) override { item(tag).setPosition({origin.x, origin.y}); }
    void paint() override {
        auto painted = std::make_shared<std::atomic<bool>>(false);
        // The window may be in the middle of a frame that knows nothing of the last changes yet.
        QObject context;
        QObject::connect(mWindow.get(), &QQuickWindow::frameSwapped, &context, [=] { *painted = true; });
        mWindow->update();
        if (!passUntil([=] { return painted->load(); })) qFatal("The window does not paint");
    }
    void destroy(long tag) override { delete &item(tag); }
    void hide() override { mWindow->hide(); }
    void close() override { mWindow.reset(); }
    void tap(const Point& point) override {
        QTest::mouseClick(mWindow.get(), Qt::LeftButton, {}, QPointF(point.x, point.y).toPoint());
    }
    std::optional<int> hostTaps() override {
        return mWindow->findChild<QQuickItem*>("host")->property("taps").toInt();
    }

    std::string serve(int status, const std::string& body) override {
        mPeer = std::make_unique<test::PageServer>(
            test::PageServer::Page{.body = QByteArray::fromStdString(body), .status = status});
        return mPeer->url();
    }
    std::vector<HttpRequest> received() override { return mPeer->received(); }
    std::string deadUrl() override { return test::PageServer().url(); }

    std::string serveSockets() override {
        mSocketPeer = std::make_unique<test::SocketPeerQt>();
        return mSocketPeer->url();
    }
    void sendText(const std::string& text) override {
        mSocketPeer->socket().sendTextMessage(QString::fromStdString(text));
    }
    void sendData(const std::string& data) override {
        mSocketPeer->socket().sendBinaryMessage(QByteArray::fromStdString(data));
    }
    void endSocket(std::optional<int> code) override {
        if (!code) return mSocketPeer->socket().abort();
        mSocketPeer->socket().close(static_cast<QWebSocketProtocol::CloseCode>(*code));
    }
    HttpRequest socketRequest() override {
        const auto native = mSocketPeer->socket().request();
        HttpRequest request{.url = native.url().toEncoded().toStdString()};
        const auto names = native.rawHeaderList();
        for (const auto& name : names)
            request.headers.emplace_back(name.toStdString(), native.rawHeader(name).toStdString());
        return request;
    }
    std::vector<std::string> socketReceived() override { return mSocketPeer->received; }
    std::optional<int> socketCloseCode() override {
        return static_cast<int>(mSocketPeer->socket().closeCode());
    }

    void becomeActive() override {
        mOther.show();
        if (!passUntil([this] { return platform().application().isActive(); })) qFatal("Not active");
    }
    void resignActive() override {
        mOther.hide();
        if (!passUntil([this] { return !platform().application().isActive(); })) qFatal("Still active");
    }

    std::string savedDefaults() override {
        QFile file(QSettings().fileName());
        return file.open(QFile::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

 private:
    QQuickItem& item(long tag) { return *mWindow->findChild<QQuickItem*>(QString::number(tag)); }

    QQmlEngine mEngine;
    std::unique_ptr<QQuickWindow> mWindow;
    QWindow mOther;
    std::unique_ptr<test::PageServer> mPeer;
    std::unique_ptr<test::SocketPeerQt> mSocketPeer;
};

}  // namespace

std::unique_ptr<Harness> makeHarness() {
    return std::make_unique<HarnessQuick>();
}

}  // namespace merovanta::conformance

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName("Test Vendor");
    QCoreApplication::setApplicationName("conformance");
    merovanta::quick::initializeChat();
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
