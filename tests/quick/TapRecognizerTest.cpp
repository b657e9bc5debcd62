#include "Platform/TapRecognizer.h"

#include <gmock/gmock.h>

#include <QtGui/QPointingDevice>
#include <QtGui/QStyleHints>

#include "Scene.h"

using merovanta::Point;
using merovanta::TapRecognizer;
using merovanta::platform::current;
using merovanta::test::Scene;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Watched {
    Scene scene{R"(ApplicationWindow {
        Button { width: 100; height: 100 }
        Dialog { objectName: "dialog"; modal: true; x: 150; y: 200; width: 100; height: 100 }
    })"};
    std::vector<Point> taps;
    std::unique_ptr<TapRecognizer> recognizer = current().tapRecognizers().create(
        [this](const TapRecognizer& from) {
            EXPECT_EQ(from.state(), TapRecognizer::State::ended);
            taps.push_back(from.locationIn(*scene.root()));
        },
        merovanta::TapRecognizerFactory::Taps::visitors);

    Watched() { recognizer->attach(*scene.root()); }
};

TEST(TapRecognizer, SeesDoubleClicksAndTapsInPopups) {
    Watched watched;
    QTest::mouseDClick(&watched.scene.window(), Qt::LeftButton, {}, {30, 40});
    EXPECT_EQ(watched.taps.size(), 2U) << "each click of a double click is a tap";
    watched.scene.object("dialog")->setProperty("visible", true);
    QTest::qWait(50);
    QTest::mouseClick(&watched.scene.window(), Qt::LeftButton, {}, {170, 250});
    EXPECT_EQ(watched.taps.back(), (Point{170, 250})) << "in a popup";
}

TEST(TapRecognizer, IgnoresDragsAndOtherButtons) {
    Watched watched;
    auto* const window = &watched.scene.window();
    const int far = QGuiApplication::styleHints()->startDragDistance() + 5;
    QTest::mousePress(window, Qt::LeftButton, {}, {10, 20});
    QTest::mouseMove(window, {10 + far, 20});
    QTest::mouseMove(window, {10, 20});
    QTest::mouseRelease(window, Qt::LeftButton, {}, {10, 20});
    QTest::mouseClick(window, Qt::RightButton, {}, {10, 20});
    EXPECT_THAT(watched.taps, IsEmpty());
    QTest::mousePress(window, Qt::LeftButton, {}, {10, 20});
    QTest::mouseRelease(window, Qt::LeftButton, {}, {12, 21});
    EXPECT_THAT(watched.taps, ElementsAre(Point{12, 21}));
}

TEST(TapRecognizer, SeesOneFingerOnce) {
    Watched watched;
    auto* const window = &watched.scene.window();
    static QPointingDevice* const screen = QTest::createTouchDevice();
    QTest::touchEvent(window, screen).press(0, {20, 20});
    QTest::touchEvent(window, screen).release(0, {20, 20});
    EXPECT_THAT(watched.taps, ElementsAre(Point{20, 20}));

    QTest::touchEvent(window, screen).press(0, {20, 20});
    QTest::touchEvent(window, screen).stationary(0).press(1, {60, 60});
    QTest::touchEvent(window, screen).stationary(0).release(1, {60, 60});
    QTest::touchEvent(window, screen).release(0, {20, 20});
    QTest::qWait(20);
    EXPECT_EQ(watched.taps.size(), 1U) << "two fingers are no tap";
}

}  // namespace
