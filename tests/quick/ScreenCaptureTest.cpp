#include "Platform/ScreenCapture.h"

#include <gtest/gtest.h>

#include <QtQuick/QSGRendererInterface>
#include <algorithm>
#include <atomic>
#include <cmath>

#include "General/Panoptra/Util/ViewUtils.h"
#include "Scene.h"

using namespace merovanta;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

constexpr std::uint32_t black = 0xff000000U;

ScreenCapture& capturer() {
    return platform::current().screenCapture();
}

/// Masks every view with tag 7 where it is.
std::vector<MaskArea> masksBelow(const std::shared_ptr<View>& view, const View& root) {
    std::vector<MaskArea> masks;
    if (view->tag() == 7) masks.push_back({view->convert(view->bounds(), root), view});
    for (const auto& child : view->subviews()) {
        for (auto& mask : masksBelow(child, root))
            masks.push_back(std::move(mask));
    }
    return masks;
}

ScreenCapture::MaskProvider maskSecrets(const std::shared_ptr<View>& root) {
    return [root] { return std::optional(masksBelow(root, *root)); };
}

struct Outcome {
    int completions = 0;
    std::optional<CapturedFrame> frame;
};

std::shared_ptr<Outcome> begin(const std::shared_ptr<View>& root, ScreenCapture::MaskProvider masks,
                               PixelBuffer buffer = {}) {
    auto outcome = std::make_shared<Outcome>();
    capturer().capture(root, std::move(buffer), std::move(masks),
                       [outcome](std::optional<CapturedFrame> frame) {
                           EXPECT_TRUE(platform::current().mainQueue().isCurrent());
                           ++outcome->completions;
                           outcome->frame = std::move(frame);
                       });
    return outcome;
}

std::optional<CapturedFrame> capture(const std::shared_ptr<View>& root, ScreenCapture::MaskProvider masks,
                                     PixelBuffer buffer = {}) {
    const auto outcome = begin(root, std::move(masks), std::move(buffer));
    EXPECT_TRUE(eventually([&] { return outcome->completions > 0; }));
    EXPECT_EQ(outcome->completions, 1);
    return std::move(outcome->frame);
}

/// Paints the masks, a pixel wider all round: renderers round edges to either side.
void blacken(CapturedFrame& frame) {
    PixelBuffer& pixels = frame.pixels;
    const auto clamp = [](double value, std::size_t limit) {
        return static_cast<std::size_t>(std::clamp(value, 0.0, static_cast<double>(limit)));
    };
    for (const MaskArea& mask : frame.masks) {
        const Rect& rect = mask.rect;
        const auto left = clamp(std::floor(rect.x * frame.scale) - 1, pixels.width());
        const auto top = clamp(std::floor(rect.y * frame.scale) - 1, pixels.height());
        const auto right = clamp(std::ceil((rect.x + rect.width) * frame.scale) + 1, pixels.width());
        const auto bottom = clamp(std::ceil((rect.y + rect.height) * frame.scale) + 1, pixels.height());
        for (auto y = top; y < bottom; ++y)
            std::fill(pixels.row(y) + left, pixels.row(y) + right, black);
    }
}

int secretPixels(const PixelBuffer& pixels) {
    int count = 0;
    for (std::size_t y = 0; y < pixels.height(); ++y) {
        for (std::size_t x = 0; x < pixels.width(); ++x) {
            const std::uint32_t word = pixels.row(y)[x];
            const auto red = (word >> 16U) & 0xffU;
            const auto green = (word >> 8U) & 0xffU;
            const auto blue = word & 0xffU;
            if (red > green + 60 && blue > green + 60) ++count;
        }
    }
    return count;
}

struct Tally {
    int delivered = 0;
    int leaked = 0;
    int masked = 0;
};

/// Takes pictures as often as possible; the step runs before each.
template <typename Step>
Tally film(Scene& scene, int attempts, Step step) {
    Tally tally;
    PixelBuffer buffer;
    const auto root = scene.root();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        step(attempt);
        QTest::qWait(3);
        auto frame = capture(root, maskSecrets(root), std::move(buffer));
        buffer = {};
        if (!frame) continue;
        ++tally.delivered;
        if (secretPixels(frame->pixels) > 0) ++tally.masked;
        blacken(*frame);
        if (secretPixels(frame->pixels) > 0) ++tally.leaked;
        buffer = std::move(frame->pixels);
    }
    return tally;
}

Tally film(Scene& scene, int attempts) {
    return film(scene, attempts, [](int) {});
}

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
    const auto frame = capture(scene.root(), maskSecrets(scene.root()));
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

TEST(ScreenCapture, AsksForMasksOnceWhileTheTreeStandsStill) {
    Scene scene(quadrants);
    const auto root = scene.root();
    std::atomic<int> calls{0};
    const auto frame = capture(root, [&] {
        ++calls;
        const auto before = ViewUtils::viewWithTag(root, 7)->frame();
        // Would happen at once, were the main thread free.
        platform::current().mainQueue().async([&] { scene.item("secret")->setX(200); });
        QThread::msleep(30);
        EXPECT_EQ(ViewUtils::viewWithTag(root, 7)->frame(), before);
        return std::optional(masksBelow(root, *root));
    });
    EXPECT_EQ(calls, 1);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->masks[0].rect.x, 20);
    EXPECT_TRUE(eventually([&] { return scene.item("secret")->x() == 200; }));
}

TEST(ScreenCapture, DeliversNothingForUnknownViews) {
    Scene scene(quadrants);
    const auto root = scene.root();
    const auto unknown = [] { return std::optional(std::vector<MaskArea>{{Rect{}, nullptr}}); };
    EXPECT_FALSE(capture(root, unknown)) << "nobody knows whether that view moved";
    EXPECT_FALSE(capture(ViewUtils::viewWithTag(root, 7), maskSecrets(root))) << "no window's content";
}

TEST(ScreenCapture, EndsWhenTheWindowHides) {
    Scene scene(quadrants);
    const auto root = scene.root();
    const auto masks = maskSecrets(root);
    ASSERT_TRUE(capture(root, masks));
    const auto isReadBack = QGuiApplication::platformName() == u"xcb";

    const auto outcome = begin(root, masks);
    scene.window().hide();
    EXPECT_TRUE(eventually([&] { return outcome->completions == 1; }));
    EXPECT_EQ(outcome->frame.has_value(), !isReadBack);
    EXPECT_FALSE(capture(root, masks)) << "hidden";

    scene.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&scene.window()));
    EXPECT_TRUE(eventually([&] { return capture(root, masks).has_value(); })) << "shown again";
}

TEST(ScreenCapture, KeepsUpWithAWindowThatIsResized) {
    Scene scene(quadrants);
    const auto tally =
        film(scene, 60, [&](int attempt) { scene.window().resize(300 + attempt, 400 + (attempt % 7) * 10); });
    EXPECT_EQ(tally.leaked, 0);
    EXPECT_GT(tally.delivered, 0);
}

constexpr int attempts = 200;

TEST(ScreenCaptureMasks, FollowAnimatedAndScrolledItems) {
    for (const auto* const moving : {R"(Window {
        SecretField {
            y: 40
            NumberAnimation on x { from: 0; to: 180; duration: 300; loops: Animation.Infinite }
            RotationAnimation on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite }
        }
    })",
                                     R"(Window {
        Flickable {
            anchors.fill: parent
            contentHeight: 4000
            Repeater { model: 40; SecretField { x: 30; y: index * 100 + 35; scale: 0.8 } }
            NumberAnimation on contentY { from: 0; to: 3600; duration: 1500; loops: Animation.Infinite }
        }
    })"}) {
        Scene scene(moving);
        const auto tally = film(scene, attempts);
        EXPECT_EQ(tally.leaked, 0) << moving;
        EXPECT_EQ(tally.masked, attempts) << "each picture had something to hide: " << moving;
    }
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
    EXPECT_TRUE(masksBelow(scene.root(), *scene.root()).empty());
    scene.item("secret")->setVisible(true);
    EXPECT_EQ(masksBelow(scene.root(), *scene.root()).size(), 1);

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
    const auto masked = masksBelow(rows.root(), *rows.root()).size();
    EXPECT_GE(masked, 2);
    EXPECT_LE(masked, 4) << "those out of sight hide no others";
}

TEST(ScreenCaptureMasks, FollowWhatMovesInsideALayer) {
    const auto* const layer = "layer.enabled: true; width: 300; height: 400;";
    for (const auto* const scenery :
         {"Item { %1 SecretField { objectName: 'secret'; y: 40 } }",
          "Item { %1 layer.sourceRect: Qt.rect(-90, -90, 600, 600); SecretField { objectName: 'secret'; y: "
          "40 } }",
          "Item { %1 layer.textureMirroring: ShaderEffectSource.NoMirroring; SecretField { objectName: "
          "'secret'; y: 40 } }",
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

TEST(ScreenCaptureMasks, AreNotTrustedWhileAnAnimatorRuns) {
    for (const auto* const scenery :
         {"SecretField { id: moved; y: 40; %1 }", "Item { SecretField { id: moved; y: 40; %1 } }",
          "Item { layer.enabled: true; width: 300; height: 400; SecretField { id: moved; y: 40; %1 } }",
          "Item { id: moved; layer.enabled: true; width: 200; height: 80; SecretField { x: 10; y: 10 } %1 "
          "}"}) {
        Scene scene(QString("Window {" + QString(scenery) + "}").arg(R"(XAnimator {
            objectName: "animator"; target: moved; from: 0; to: 100; duration: 400
            loops: Animation.Infinite; running: true
        })"));
        const auto tally = film(scene, attempts);
        EXPECT_EQ(tally.leaked, 0) << scenery;
        EXPECT_LT(tally.delivered, attempts / 2) << scenery;

        QObject* const animator = scene.object("animator");
        animator->setProperty("running", false);
        QTest::qWait(100);
        // Stopped just where a loop begins, it leaves the item painted beside its place until that changes.
        animator->property("target").value<QQuickItem*>()->setX(50);
        const auto after = film(scene, 5);
        EXPECT_EQ(after.masked, 5) << "at rest the pictures come again: " << scenery;
        EXPECT_EQ(after.leaked, 0) << scenery;
    }
}

TEST(ScreenCaptureMasks, HoldInTheTransitionsOfAStackView) {
    Scene scene(R"(ApplicationWindow {
        StackView {
            id: stack; anchors.fill: parent; initialItem: LoginPage {}
            Component { id: page; SecretPage {} }
            function turn() { if (depth > 2) pop(); else push(page) }
            objectName: "stack"
        }
    })");
    const auto tally = film(scene, 2 * attempts, [&](int attempt) {
        if (attempt % 10 == 0) QMetaObject::invokeMethod(scene.object("stack"), "turn");
        // Time to come to rest, so that some pictures are delivered.
        if (attempt % 50 == 45) QTest::qWait(500);
    });
    EXPECT_EQ(tally.leaked, 0);
    EXPECT_GT(tally.masked, 0);
    RecordProperty("delivered", tally.delivered);
}

}  // namespace
