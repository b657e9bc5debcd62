#include "Platform/WidgetView.h"

#include <gmock/gmock.h>

#include <algorithm>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#include <QtGui/QAccessible>

#include "Qt/Quick/AlertFactoryQuick.h"
#include "Qt/Quick/ImageOverlayFactoryQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/WidgetViewFactoryQuick.h"
#include "Scene.h"

using Element = merovanta::WidgetView::Element;
using merovanta::quick::WidgetViewFactoryQuick;
using merovanta::test::eventually;
using merovanta::test::Scene;
using testing::ElementsAre;

namespace {

struct Shown {
    Shown() {
        merovanta::WidgetView::Actions actions;
        actions.hideClicked = [this] { log.emplace_back("hide"); };
        actions.closeClicked = [this] { widget.reset(), log.emplace_back("close"); };
        actions.openChat = [this] { log.emplace_back("chat"); };
        widget = WidgetViewFactoryQuick().create(*scene.root(), actions);
        widget->setText("47192");
        widget->setHidden(Element::chatButton, false);
    }
    QQuickItem* item(const char* name) { return scene.item(name); }
    QRectF place(const char* name) {
        // Lays out what a change has moved.
        scene.window().grabWindow();
        return item(name)->mapRectToScene(item(name)->boundingRect());
    }
    void click(QPointF point) { QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, point.toPoint()); }
    int hostTaps() { return scene.object("host")->property("taps").toInt(); }
    void collapse(bool isCollapsed) {
        widget->setHidden(Element::showButton, !isCollapsed);
        widget->setHidden(Element::hideButton, isCollapsed);
        widget->setHidden(Element::buttonGroup, isCollapsed);
    }

    Scene scene{R"(ApplicationWindow {
        color: "#ff00ff"
        MouseArea { objectName: "host"; property int taps; anchors.fill: parent; onClicked: ++taps }
        Button { focus: true; background: null }
        Popup {
            objectName: "popup"
            width: 300
            height: 400
            padding: 0
            modal: true
            background: Rectangle { color: "#00ff00" }
        }
    })"};
    std::vector<std::string> log;
    std::unique_ptr<merovanta::WidgetView> widget;
};

TEST(WidgetView, TakesTouchesOnItsControlsOnly) {
    Shown shown;
    EXPECT_EQ(shown.widget->view()->className(), "DefaultUIView");
    const auto body = shown.place("widget");
    for (const QPointF empty : {QPointF(20, 200), body.topLeft() + QPointF(40, 20)})
        shown.click(empty);
    for (const auto* name : {"hideButton", "chatButton", "closeButton"})
        shown.click(shown.place(name).center());
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 3; }));
    EXPECT_THAT(shown.log, ElementsAre("hide", "chat", "close"));
    EXPECT_EQ(shown.hostTaps(), 2);
    shown.click(body.center());
    EXPECT_EQ(shown.hostTaps(), 3) << "closed in its own action";
}

TEST(WidgetView, StaysInsideOfEveryWindow) {
    Shown shown;
    const std::string longText = std::string(100'000, 'W') + " and so on";
    for (const QSize size : {QSize(320, 480), QSize(568, 320), QSize(844, 390), QSize(240, 200)}) {
        shown.scene.window().resize(size);
        ASSERT_TRUE(eventually([&] { return shown.scene.window().contentItem()->size() == size; }));
        EXPECT_EQ(shown.place("widget").right(), size.width()) << "follows";
        for (const auto& text : {std::string("47192"), longText, std::string("\xff\xfe")}) {
            shown.widget->setText(text);
            for (const double notch : {0.0, 20.0}) {
                const auto safe = QRectF({}, QSizeF(size)).adjusted(notch, notch, -notch, -notch);
                shown.item("widget")->parentItem()->setProperty("safeArea", safe);
                for (const auto* name : {"hideButton", "chatButton", "closeButton", "widget"}) {
                    const QRectF place = shown.place(name);
                    EXPECT_TRUE(safe.contains(place)) << name << size.width() << text.substr(0, 9);
                    EXPECT_GE(std::min(place.width(), place.height()), 44);
                }
            }
        }
    }
}

TEST(WidgetView, IsShapedAndColoured) {
    Shown shown;
    QTest::qWait(50);
    const auto colourAt = [&](QPointF point) {
        return shown.scene.window().grabWindow().pixelColor(point.toPoint()).name().toStdString();
    };
    const std::string host = "#ff00ff";
    const std::string dark = "#303030";
    const auto body = shown.place("widget").adjusted(0, 0, -1, -1);
    EXPECT_EQ(colourAt(body.topLeft()), host);
    EXPECT_NE(colourAt(body.topLeft() + QPointF(3, 3)), host);
    EXPECT_EQ(colourAt(body.bottomLeft()), host);
    EXPECT_EQ(colourAt(body.bottomLeft() + QPointF(3, -3)), dark) << "shows behind the group's round corner";
    EXPECT_NE(colourAt(body.bottomLeft() + QPointF(8, -8)), dark);
    EXPECT_NE(colourAt(body.bottomRight()), host);
    shown.collapse(true);
    const auto tab = shown.place("showButton").adjusted(0, 0, -1, -1);
    EXPECT_EQ(colourAt(tab.topLeft() + QPointF(6, 6)), host);
    EXPECT_EQ(colourAt(tab.bottomLeft() + QPointF(6, -6)), host);
    EXPECT_EQ(colourAt(tab.bottomRight() + QPointF(-1, -2)), dark);
    EXPECT_EQ(colourAt(body.topRight()), host) << "collapsed";
}

TEST(WidgetView, IsInFrontOfDrawingsAndOfPopupsButForTheLibrarysQuestions) {
    Shown shown;
    const auto hasDarkBody = [&] {
        const auto point = shown.place("closeButton").topLeft() + QPointF(4, 4);
        return shown.scene.window().grabWindow().pixelColor(point.toPoint()).lightness() < 80;
    };
    merovanta::PixelBuffer white;
    white.resize(8, 8);
    std::fill_n(white.row(0), 64, 0xFFFFFFFF);
    const auto drawing = merovanta::quick::ImageOverlayFactoryQuick().show(*shown.scene.root(), white, 1);
    EXPECT_TRUE(hasDarkBody());
    QMetaObject::invokeMethod(shown.scene.object("popup"), "open");
    EXPECT_TRUE(eventually(hasDarkBody));
    shown.click(shown.place("hideButton").center());
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 1; })) << "and can be used";
    const auto question = merovanta::quick::AlertFactoryQuick().present(
        *shown.scene.controller(), {.title = "?", .message = "", .accept = "Yes", .decline = "No"},
        [](bool) {});
    const auto* const widget = shown.item("widget")->parentItem();
    EXPECT_TRUE(eventually([&] { return widget->z() < merovanta::quick::zBehindPopups + 1; }));
}

QStringList announced;

void noteAnnouncement(QAccessibleEvent* event) {
    if (event->type() != QAccessible::Alert) return;
    announced << QAccessible::queryAccessibleInterface(event->object())->text(QAccessible::Name);
}

TEST(WidgetView, IsReachedByKeyboardAndScreenReader) {
    Shown shown;
    // No screen reader runs here, and only the platform knows.
    auto* const accessibility = QGuiApplicationPrivate::platformIntegration()->accessibility();
    accessibility->setActive(true);
    const auto handler = QAccessible::installUpdateHandler(&noteAnnouncement);
    for (const auto* text : {"Waiting", "Waiting", "47192"})
        shown.widget->setText(text);
    QAccessible::installUpdateHandler(handler);
    accessibility->setActive(false);
    EXPECT_EQ(announced, QStringList({"Waiting", "4 7 1 9 2"}));
    const auto name = [](QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(name(shown.item("shareId")), "4 7 1 9 2");
    std::vector<std::string> names;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&shown.scene.window(), Qt::Key_Tab);
        names.push_back(name(shown.scene.window().activeFocusItem()));
        QTest::keyClick(&shown.scene.window(), i == 0 ? Qt::Key_Space : Qt::Key_Return);
        if (i > 0) continue;
        shown.collapse(true);
        EXPECT_TRUE(shown.item("showButton")->hasActiveFocus());
        shown.collapse(false);
    }
    EXPECT_THAT(names, ElementsAre("Hide co-browsing", "Open chat", "End co-browsing"));
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 3; }));
}

TEST(WidgetView, DiesWithItsWindow) {
    Shown shown;
    const auto root = shown.scene.root();
    shown.click(shown.place("hideButton").center());
    shown.scene.close();
    EXPECT_FALSE(shown.widget->view()->isAlive());
    shown.widget->setText("text");
    shown.collapse(true);
    QTest::qWait(20);
    EXPECT_EQ(WidgetViewFactoryQuick().create(*root, {}), nullptr);
}

}  // namespace
