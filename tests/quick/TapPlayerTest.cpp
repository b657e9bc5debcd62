#include "Qt/Quick/TapPlayerQuick.h"

#include <gmock/gmock.h>

#include <cmath>

#include "Scene.h"

using merovanta::Point;
using merovanta::TapRecognizerFactory;
using merovanta::quick::TapPlayerQuick;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

/// Runs something of the host's in the middle of a tap.
class HostItem final : public QQuickItem {
 public:
    HostItem(QQuickItem* parent, std::function<void()> pressed)
        : QQuickItem(parent), mPressed(std::move(pressed)) {
        setAcceptedMouseButtons(Qt::LeftButton);
        setSize({10, 10});
        setZ(1);
    }
    int releases = 0;

 protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { mPressed(); }
    void mouseReleaseEvent(QMouseEvent* /*event*/) override { ++releases; }

 private:
    std::function<void()> mPressed;
};

TEST(TapPlayer, ReachesWhatTheVisitorWouldReach) {
    Scene scene(R"(ApplicationWindow {
        id: main
        property string log
        function note(what) { log += what + " " }
        MouseArea { width: 50; height: 50; onPressed: note("press"); onReleased: note("release") }
        MouseArea { x: 50; width: 50; height: 50; onClicked: note("behind") }
        MouseArea { x: 50; width: 50; height: 50; z: 1; onClicked: note("front") }
        Item { x: 100; width: 50; height: 50; TapHandler { onTapped: note("handler") } }
        Button { x: 150; width: 50; height: 50; onClicked: note("button") }
        TextField { x: 200; width: 50; height: 50; onActiveFocusChanged: if (activeFocus) note("focus") }
        Rectangle { y: 50; width: 50; height: 50 }
        MouseArea { x: 50; y: 50; width: 50; height: 50; onClicked: note("below") }
        Button { x: 50; y: 50; width: 50; height: 50; enabled: false; onClicked: note("disabled") }
        MouseArea { x: 50; y: 50; width: 50; height: 50; enabled: false; onClicked: note("disabled") }
        Item {
            x: 100; y: 50; width: 50; height: 50; clip: true
            MouseArea { width: 100; height: 50; onClicked: note("clipped") }
        }
        Popup {
            objectName: "popup"; x: 100; y: 200; width: 100; height: 100; padding: 0
            Button { anchors.fill: parent; onClicked: note("popup") }
        }
    })");
    TapPlayerQuick player;
    int seen = 0;
    const auto recognizer = merovanta::platform::current().tapRecognizers().create(
        [&](const auto&) { ++seen; }, TapRecognizerFactory::Taps::visitors);
    recognizer->attach(*scene.root());
    const auto expectTap = [&](Point point, bool isTaken, const QString& log) {
        SCOPED_TRACE(testing::Message() << point.x << ", " << point.y);
        scene.window().setProperty("log", "");
        EXPECT_EQ(player.tap(*scene.root(), point), isTaken);
        EXPECT_EQ(scene.window().property("log").toString().trimmed().toStdString(), log.toStdString());
    };
    expectTap({25, 25}, true, "press release");
    expectTap({75, 25}, true, "front");
    expectTap({125, 25}, true, "handler");
    expectTap({175, 25}, true, "button");
    expectTap({225, 25}, true, "focus");
    expectTap({25, 75}, false, "");
    expectTap({75, 75}, true, "below");
    expectTap({125, 75}, true, "clipped");
    expectTap({175, 75}, false, "");
    for (const double far : {-1.0, 1e300, -1e300, std::nan(""), HUGE_VAL}) {
        expectTap({far, 25}, false, "");
        expectTap({25, far}, false, "");
    }
    expectTap({150, 250}, false, "");
    scene.object("popup")->setProperty("visible", true);
    QTest::qWait(50);
    expectTap({150, 250}, true, "popup");
    expectTap({250, 350}, false, "");
    scene.object("popup")->setProperty("modal", true);
    scene.object("popup")->setProperty("visible", true);
    expectTap({25, 25}, true, "focus");
    EXPECT_TRUE(eventually([&] { return !scene.object("popup")->property("visible").toBool(); }))
        << "a tap outside dismisses it, and no more";
    EXPECT_EQ(seen, 0) << "the visitor did not tap";
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {25, 25});
    EXPECT_EQ(seen, 1);
}

TEST(TapPlayer, BearsWhatTheHostDoesMeanwhile) {
    Scene scene("Window { MouseArea { width: 10; height: 10 } Item { objectName: \"doomed\" } }");
    TapPlayerQuick player;
    auto* const item = new HostItem(scene.window().contentItem(), [&] {
        EXPECT_FALSE(player.tap(*scene.root(), {5, 5})) << "one at a time";
        delete scene.item("doomed");
        scene.window().hide();
    });
    const auto root = scene.root();
    EXPECT_TRUE(player.tap(*root, {5, 5}));
    EXPECT_EQ(item->releases, 1);
    EXPECT_FALSE(player.tap(*root, {5, 5})) << "hidden";
    scene.close();
    EXPECT_FALSE(player.tap(*root, {5, 5})) << "dead";
}

}  // namespace
