#include "Platform/ImageOverlay.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Qt/Quick/ImageOverlayFactoryQuick.h"
#include "Scene.h"

using merovanta::PixelBuffer;
using merovanta::quick::ImageOverlayFactoryQuick;
using merovanta::test::Scene;

namespace {

/// Red at the left, half transparent blue at the right.
PixelBuffer redAndBlue() {
    PixelBuffer pixels;
    pixels.resize(20, 10);
    for (std::size_t y = 0; y < 10; ++y) {
        for (std::size_t x = 0; x < 20; ++x)
            pixels.row(y)[x] = x < 10 ? 0xFFFF0000 : 0x80000080;
    }
    return pixels;
}

void expectColour(QColor actual, QColor expected) {
    EXPECT_NEAR(actual.red(), expected.red(), 2);
    EXPECT_NEAR(actual.green(), expected.green(), 2);
    EXPECT_NEAR(actual.blue(), expected.blue(), 2);
}

TEST(ImageOverlay, CoversTheViewAndLetsTouchesThrough) {
    Scene scene(R"(ApplicationWindow {
        color: "white"
        Button { objectName: "button"; property int taps; anchors.fill: parent; opacity: 0; onClicked: ++taps }
        Popup { visible: true; x: 140; y: 60; width: 30; height: 30; background: Rectangle {} }
    })");
    ImageOverlayFactoryQuick factory;
    auto overlay = factory.show(*scene.root(), redAndBlue(), 0.5);
    for (const QSize size : {QSize(300, 400), QSize(500, 200)}) {
        scene.window().resize(size);
        ASSERT_TRUE(
            merovanta::test::eventually([&] { return scene.window().contentItem()->size() == size; }));
        const QImage image = scene.window().grabWindow();
        // What is presented over the view stays in front.
        expectColour(image.pixelColor(155 * image.width() / size.width(), 75 * image.height() / size.height()),
                     Qt::white);
        for (const double place : {0.08, 0.92}) {
            const int y = static_cast<int>(image.height() * place);
            expectColour(image.pixelColor(image.width() / 15, y), QColor(255, 127, 127));
            expectColour(image.pixelColor(image.width() * 14 / 15, y), QColor(191, 191, 255));
        }
    }
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {250, 100});
    EXPECT_EQ(scene.object("button")->property("taps"), 1);

    const auto second = factory.show(*scene.root(), {}, 1);
    const auto subviews = scene.root()->subviews();
    EXPECT_TRUE(std::any_of(subviews.begin(), subviews.end(), [](const auto& view) {
        return view->className() == "PassthroughUIImageView";
    }));
    overlay.reset();
    expectColour(scene.window().grabWindow().pixelColor(250, 100), Qt::white);
}

TEST(ImageOverlay, GoesWithItsView) {
    Scene scene("Window {}");
    const auto root = scene.root();
    const auto overlay = ImageOverlayFactoryQuick().show(*root, redAndBlue(), 0.5);
    scene.close();
    EXPECT_EQ(ImageOverlayFactoryQuick().show(*root, redAndBlue(), 0.5), nullptr);
}

}  // namespace
