#include <gtest/gtest.h>

#include <QtGui/QImage>

#include "Platform/ScreenCapture.h"
#include "Scene.h"

using namespace merovanta;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

constexpr QRgb outline = 0xff1971c2;

/// Finds whatever the host has marked.
class MarkJudge final : public MaskJudge {
 public:
    void begin(bool /*anyMarked*/) override {}
    std::optional<std::size_t> classEntry(std::string_view /*className*/) const override { return {}; }
    MaskVerdict enter(const ViewTraits& view) override {
        if (!view.masked.value_or(false)) return {};
        return {.reason = MaskReason{MaskReason::Kind::mark, 0}, .isNamed = true};
    }
    void leave() override {}
};

MaskPreview preview() {
    return {std::make_shared<MarkJudge>(), [](const MaskReason&) { return std::string("mark"); }};
}

class MaskPreviewTest : public testing::Test {
 protected:
    ~MaskPreviewTest() override { platform::current().screenCapture().setPreview({}); }

    /// Whether the window shows outlines; they are the only thing of their colour.
    bool isOutlined() {
        const QImage shown = scene.window().grabWindow().convertToFormat(QImage::Format_RGB32);
        return contains(reinterpret_cast<const std::uint32_t*>(shown.constBits()),
                        static_cast<std::size_t>(shown.sizeInBytes()) / 4);
    }

    bool isOutlinedInPicture() {
        std::optional<CapturedFrame> frame;
        bool isDone = false;
        platform::current().screenCapture().capture(scene.root(), {}, std::make_shared<MarkJudge>(),
                                                    [&](std::optional<CapturedFrame> result) {
                                                        isDone = true;
                                                        frame = std::move(result);
                                                    });
        EXPECT_TRUE(eventually([&] { return isDone; }));
        if (!frame) {
            ADD_FAILURE() << "no picture";
            return false;
        }
        return contains(frame->pixels.row(0), frame->pixels.width() * frame->pixels.height());
    }

    Scene scene{R"(ApplicationWindow {
        color: "white"
        Rectangle { objectName: "secret"; x: 40; y: 60; width: 120; height: 80; color: "silver"; Merovanta.masked: true }
    })"};

 private:
    static bool contains(const std::uint32_t* pixels, std::size_t count) {
        return std::find(pixels, pixels + count, outline) != pixels + count;
    }
};

TEST_F(MaskPreviewTest, OutlinesWhatIsCoveredAndIsInNoPicture) {
    EXPECT_FALSE(isOutlined());
    platform::current().screenCapture().setPreview(preview);
    ASSERT_TRUE(eventually([&] { return isOutlined(); }));
    for (int frame = 0; frame < 5; ++frame) {
        scene.item("secret")->setX(40 + frame * 10);
        EXPECT_FALSE(isOutlinedInPicture());
        QTest::qWait(20);
        EXPECT_TRUE(isOutlined());
    }

    scene.item("secret")->setVisible(false);
    EXPECT_TRUE(eventually([&] { return !isOutlined(); })) << "nothing is covered";
    scene.item("secret")->setVisible(true);
    EXPECT_TRUE(eventually([&] { return isOutlined(); }));
    platform::current().screenCapture().setPreview({});
    EXPECT_TRUE(eventually([&] { return !isOutlined(); })) << "switched off";
}

TEST_F(MaskPreviewTest, ShowsInWindowsThatComeLaterAndOutlivesTheirEnd) {
    platform::current().screenCapture().setPreview(preview);
    {
        Scene later("ApplicationWindow { color: 'white'; Merovanta.masked: true }");
        const auto corner = [&] { return later.window().grabWindow().pixel(1, 30) == outline; };
        EXPECT_TRUE(eventually(corner));
    }
    EXPECT_TRUE(eventually([&] { return isOutlined(); }));
}

}  // namespace
