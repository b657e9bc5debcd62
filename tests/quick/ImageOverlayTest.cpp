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

bool isNear(QColor actual, QColor expected) {
    const auto differs = [](int a, int b) { return std::abs(a - b) > 2; };
    return !differs(actual.red(), expected.red()) && !differs(actual.green(), expected.green()) &&
           !differs(actual.blue(), expected.blue());
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
        const QPoint inPopup(155 * image.width() / size.width(), 75 * image.height() / size.height());
        EXPECT_TRUE(isNear(image.pixelColor(inPopup), Qt::white));
        for (const double place : {0.08, 0.92}) {
            const int y = static_cast<int>(image.height() * place);
            EXPECT_TRUE(isNear(image.pixelColor(image.width() / 15, y), QColor(255, 127, 127)));
            EXPECT_TRUE(isNear(image.pixelColor(image.width() * 14 / 15, y), QColor(191, 191, 255)));
        }
    }
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {250, 100});
    EXPECT_EQ(scene.object("button")->property("taps"), 1);

    const auto second = factory.show(*scene.root(), {}, 1);
    const auto subviews = scene.root()->subviews();
    EXPECT_TRUE(std::any_of(subviews.begin(), subviews.end(),
                            [](const auto& view) { return view->className() == "PassthroughUIImageView"; }));
    overlay.reset();
    EXPECT_TRUE(isNear(scene.window().grabWindow().pixelColor(250, 100), Qt::white));

    const auto root = scene.root();
    scene.close();
    EXPECT_EQ(factory.show(*root, redAndBlue(), 1), nullptr);
}

}  // namespace
