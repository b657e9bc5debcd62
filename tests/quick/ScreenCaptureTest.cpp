#include "Platform/ScreenCapture.h"

#include <gtest/gtest.h>

#include <QtQuick/QSGRendererInterface>
#include <atomic>

#include "Film.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Scene.h"

using namespace merovanta;
using namespace merovanta::test;

namespace {

constexpr auto quadrants = R"(Window {
    color: "#102030"
    Rectangle { width: 150; height: 200; color: "#ff0000" }
    Rectangle { x: 150; y: 200; width: 150; height: 200; color: "#0000ff"; opacity: 0.5 }
    SecretField { objectName: "secret"; x: 20; y: 300 }
})";

TEST(ScreenCapture, BlendsOverTheWindowsColor) {
    Scene scene(quadrants);
    if (QGuiApplication::platformName() == u"xcb") {
        ASSERT_EQ(scene.window().rendererInterface()->graphicsApi(), QSGRendererInterface::OpenGL);
    }
    const auto frame = takePicture(scene.root(), secrets());
    ASSERT_TRUE(frame);
    const auto at = [&](int x, int y) {
        return frame->pixels.row(
            static_cast<std::size_t>(y * frame->scale))[static_cast<std::size_t>(x * frame->scale)];
    };
    EXPECT_EQ(at(290, 10), 0xff102030U);
    const auto mixed = at(290, 390);
    EXPECT_EQ(mixed >> 24U, 0xffU);
    EXPECT_NEAR(static_cast<int>(mixed & 0xffU), (0x30 + 0xff) / 2.0, 2);
}

/// Looks around while it judges.
class CuriousJudge : public MaskJudge {
 public:
    explicit CuriousJudge(Scene& scene) : mScene(scene), mRoot(scene.root()) {}

    void begin(bool /*anyMarked*/) override {
        ++walks;
        const auto before = ViewUtils::viewWithTag(mRoot, 7)->frame();
        // Would happen at once, were the main thread free.
        platform::current().mainQueue().async([this] { mScene.item("secret")->setX(200); });
        QThread::msleep(30);
        EXPECT_EQ(ViewUtils::viewWithTag(mRoot, 7)->frame(), before);
    }
    [[nodiscard]] std::optional<std::size_t> classEntry(std::string_view) const override {
        return std::nullopt;
    }
    [[nodiscard]] MaskVerdict enter(const ViewTraits& view) override {
        return {.paintsFixed = view.tag == 7};
    }
    void leave() override {}

    std::atomic<int> walks{0};

 private:
    Scene& mScene;
    std::shared_ptr<View> mRoot;
};

TEST(ScreenCapture, JudgesOnceWhileTheTreeStandsStill) {
    Scene scene(quadrants);
    const auto judge = std::make_shared<CuriousJudge>(scene);
    const auto frame = takePicture(scene.root(), judge);
    EXPECT_EQ(judge->walks, 1);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->masks.at(0).rect.x, 40) << "by the service's rule";
    EXPECT_TRUE(eventually([&] { return scene.item("secret")->x() == 200; }));
}

TEST(ScreenCapture, EndsWhenTheWindowHides) {
    Scene scene(quadrants);
    const auto root = scene.root();
    ASSERT_TRUE(takePicture(root, secrets()));
    EXPECT_FALSE(takePicture(ViewUtils::viewWithTag(root, 7), secrets())) << "no window's content";
    const auto isReadBack = QGuiApplication::platformName() == u"xcb";

    const auto outcome = merovanta::test::beginPicture(root, secrets());
    scene.window().hide();
    EXPECT_TRUE(eventually([&] { return outcome->completions == 1; }));
    EXPECT_EQ(outcome->frame.has_value(), !isReadBack);
    EXPECT_FALSE(takePicture(root, secrets())) << "hidden";

    scene.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&scene.window()));
    EXPECT_TRUE(eventually([&] { return takePicture(root, secrets()).has_value(); })) << "shown again";
}

/// How many areas the next picture covers.
std::size_t countMasks(Scene& scene) {
    QTest::qWait(50);
    const auto frame = takePicture(scene.root(), secrets());
    return frame ? frame->masks.size() : 0;
}

TEST(ScreenCaptureMasks, LeaveNothingBehindWhenAnItemMovesBelowAnOpaqueOne) {
    Scene scene(R"(Window {
        color: "white"
        SecretField { objectName: "secret"; x: 20; y: 40 }
        Rectangle { y: 240; width: 300; height: 160; color: "navy" }
    })");

    const auto tally =
        film(scene, 40, [&](int attempt) { scene.item("secret")->setY(attempt % 2 == 0 ? 180 : 300); });
    EXPECT_EQ(tally.leaked, 0);
    EXPECT_GT(tally.masked, 0);
}

TEST(ScreenCaptureMasks, SpareWhatIsNotShown) {
    Scene scene(R"(Window {
        SecretField { objectName: "secret"; visible: false; x: 20; y: 40 }
    })");
    EXPECT_EQ(countMasks(scene), 0);
    scene.item("secret")->setVisible(true);
    EXPECT_EQ(countMasks(scene), 1);

    Scene rows(R"(Window {
        Item { layer.enabled: true; width: 9; height: 9; Item { visible: false; SecretField {} } }
        Item { layer.enabled: true; visible: false; width: 9; height: 9; SecretField {} }
        ListView {
            layer.enabled: true
            objectName: "list"; height: 100; width: 200; model: 30; cacheBuffer: 600; reuseItems: true
            delegate: SecretField { height: 50 }
        }
    })");
    const auto all = [&] {
        return rows.item("list")->property("contentItem").value<QQuickItem*>()->childItems();
    };
    EXPECT_TRUE(eventually([&] { return all().size() > 10; })) << "rows are made in advance";
    rows.item("list")->setProperty("contentY", 500);
    QTest::qWait(50);
    const auto masked = countMasks(rows);
    EXPECT_GE(masked, 2);
    EXPECT_LE(masked, 4) << "those out of sight hide no others";
}

TEST(ScreenCaptureMasks, FollowWhatMovesInsideALayer) {
    const auto* const layer = "layer.enabled: true; width: 300; height: 400;";
    for (const auto* const scenery :
         {"Item { %1 SecretField { objectName: 'secret'; y: 40 } }",
          "Item { %1 Item { %1 Item { %1 SecretField { objectName: 'secret'; y: 40 } } } }",
          "Item { id: source; visible: false; width: 300; height: 400; SecretField { objectName: 'secret'; "
          "y: 40 } } "
          "ShaderEffectSource { sourceItem: source; width: 300; height: 400 }"}) {
        Scene scene("Window {" + QString(scenery).replace("%1", layer) + "}");
        const auto tally = film(scene, 20, [&](int attempt) {
            // With frames of its own in between, and without.
            if (attempt % 2 == 0) QTest::qWait(40);
            scene.item("secret")->setX(attempt % 3 * 50);
        });
        EXPECT_EQ(tally.leaked, 0) << scenery;
        EXPECT_EQ(tally.masked, 20) << scenery;

        QTest::qWait(100);
        film(scene, 1);
        int frames = 0;
        QObject::connect(&scene.window(), &QQuickWindow::beforeRendering, [&] { ++frames; });
        QTest::qWait(100);
        EXPECT_EQ(frames, 0) << "a picture asks for no further frame: " << scenery;
    }
}

TEST(ScreenCaptureMasks, FollowWhatAnimatorsMove) {
    const auto* const mover = R"(XAnimator {
        target: moved; from: 0; to: 100; duration: 400; loops: Animation.Infinite; running: true
    } OpacityAnimator { target: moved; from: 0; to: 1; duration: 90; loops: Animation.Infinite; running: true })";
    const auto* const layer = "layer.enabled: true; width: 200; height: 80;";
    for (const auto* const scenery :
         {"SecretField { id: moved; y: 40; opacity: 0; %1 }",
          "Item { id: moved; RotationAnimator on rotation { to: 20; duration: 700 } SecretField { y: 40 } "
          "%1 }",
          "Item { %2 clip: true; SecretField { id: moved; y: 40; %1 } }",
          "Item { id: moved; %2 SecretField { x: 10; y: 10 } %1 }",
          "Item { %2 Item { %2 id: moved; scale: 0.7; SecretField { x: 10; y: 10 } %1 } }"}) {
        Scene scene(QString("Window {" + QString(scenery) + "}").replace("%1", mover).replace("%2", layer));
        const auto tally = film(scene, 100);
        EXPECT_EQ(tally.leaked, 0) << scenery;
        EXPECT_EQ(tally.delivered, 100) << scenery;
        EXPECT_GT(tally.masked, 0) << scenery;
    }
}

}  // namespace
