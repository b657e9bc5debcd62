#include "Platform/WidgetView.h"

#include <gmock/gmock.h>

#include <QtGui/QAccessible>

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
        widget = WidgetViewFactoryQuick().create(*scene.root(),
                                                 {.hideClicked = [this] { log.emplace_back("hide"); },
                                                  .closeClicked =
                                                      [this] {
                                                          widget.reset();
                                                          log.emplace_back("close");
                                                      },
                                                  .openChat = [this] { log.emplace_back("chat"); }});
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
    })"};
    std::vector<std::string> log;
    std::unique_ptr<merovanta::WidgetView> widget;
};

TEST(WidgetView, TakesTouchesOnItsControlsOnly) {
    Shown shown;
    EXPECT_EQ(shown.widget->view()->className(), "DefaultUIView");
    EXPECT_TRUE(shown.widget->view()->isKindOf("DefaultUIView"));
    const auto body = shown.place("widget");
    const auto empty = {QPointF(20, 200), body.topLeft() + QPointF(40, 20),
                        body.bottomLeft() + QPointF(3, -20)};
    for (const QPointF point : empty)
        shown.click(point);
    EXPECT_EQ(shown.hostTaps(), 3);
    for (const auto* name : {"hideButton", "chatButton", "closeButton"}) {
        shown.click(shown.place(name).center());
    }
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 3; }));
    EXPECT_THAT(shown.log, ElementsAre("hide", "chat", "close"));
    EXPECT_EQ(shown.hostTaps(), 3);
    shown.click(body.center());
    EXPECT_EQ(shown.hostTaps(), 4) << "closed in its own action";
}

TEST(WidgetView, CollapsesToItsShowButton) {
    Shown shown;
    const auto body = shown.place("widget");
    shown.collapse(true);
    shown.click({body.left() + 5, body.center().y()});
    EXPECT_EQ(shown.hostTaps(), 1);
    shown.click(shown.place("showButton").center());
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 1; }));
    EXPECT_THAT(shown.log, ElementsAre("hide"));
    shown.collapse(false);
    EXPECT_FALSE(shown.item("showButton")->isVisible());
    EXPECT_EQ(shown.place("widget"), body);
}

TEST(WidgetView, StaysInsideOfEveryWindow) {
    Shown shown;
    const std::string longText = std::string(100'000, 'W') + " and so on";
    for (const QSize size : {QSize(320, 480), QSize(568, 320), QSize(844, 390), QSize(240, 200)}) {
        shown.scene.window().resize(size);
        ASSERT_TRUE(eventually([&] { return shown.scene.window().contentItem()->size() == size; }));
        for (const auto& text : {std::string("47192"), longText, std::string("\xff\xfe")}) {
            shown.widget->setText(text);
            QRectF safe({}, QSizeF(size));
            EXPECT_EQ(shown.place("widget").right(), safe.right());
            for (const double notch : {0.0, 20.0}) {
                safe.adjust(notch, notch, -notch, -notch);
                shown.item("widget")->parentItem()->setProperty("safeArea", safe);
                for (const auto* name : {"hideButton", "chatButton", "closeButton", "widget"}) {
                    EXPECT_TRUE(safe.contains(shown.place(name)))
                        << name << size.width() << text.substr(0, 9);
                    EXPECT_GE(std::min(shown.place(name).width(), shown.place(name).height()), 44);
                }
            }
            shown.item("widget")->parentItem()->setProperty("safeArea", QRectF({}, QSizeF(size)));
        }
    }
    shown.widget->setText("11111");
    const auto width = shown.place("widget").width();
    shown.widget->setText("48484");
    EXPECT_EQ(shown.place("widget").width(), width) << "digits do not jump";
}

TEST(WidgetView, IsShapedAndColoured) {
    Shown shown;
    QTest::qWait(50);
    const auto colourAt = [&](QPointF point) {
        static QImage image;
        image = shown.scene.window().grabWindow();
        return image.pixelColor(point.toPoint()).name().toStdString();
    };
    const std::string host = "#ff00ff";
    const std::string dark = "#303030";
    const auto body = shown.place("widget");
    EXPECT_EQ(colourAt(body.topLeft()), host);
    EXPECT_NE(colourAt(body.topLeft() + QPointF(3, 3)), host);
    EXPECT_EQ(colourAt(body.bottomLeft() + QPointF(0, -1)), host);
    EXPECT_EQ(colourAt(body.bottomLeft() + QPointF(3, -4)), dark) << "shows behind the group's round corner";
    EXPECT_NE(colourAt(body.bottomLeft() + QPointF(8, -9)), dark);
    EXPECT_NE(colourAt(body.topRight() + QPointF(-1, 0)), host);
    EXPECT_NE(colourAt(body.bottomRight() + QPointF(-1, -1)), host);
    shown.collapse(true);
    const auto tab = shown.place("showButton");
    EXPECT_EQ(colourAt(tab.topLeft() + QPointF(6, 6)), host);
    EXPECT_EQ(colourAt(tab.bottomLeft() + QPointF(6, -7)), host);
    EXPECT_EQ(colourAt(tab.topRight() + QPointF(-2, 2)), dark);
    EXPECT_EQ(colourAt(tab.bottomRight() + QPointF(-2, -3)), dark);
}

TEST(WidgetView, IsReachedByKeyboardAndScreenReader) {
    Shown shown;
    const auto name = [](QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(name(shown.item("shareId")), "4 7 1 9 2");
    std::vector<std::string> names;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&shown.scene.window(), Qt::Key_Tab);
        names.push_back(name(shown.scene.window().activeFocusItem()));
        QTest::keyClick(&shown.scene.window(), i == 0 ? Qt::Key_Space : Qt::Key_Return);
    }
    EXPECT_THAT(names, ElementsAre("Hide co-browsing", "Open chat", "End co-browsing"));
    EXPECT_TRUE(eventually([&] { return shown.log.size() == 3; }));
    EXPECT_THAT(shown.log, ElementsAre("hide", "chat", "close"));
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
