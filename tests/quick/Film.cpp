#include "Film.h"

#include <gtest/gtest.h>

#include "General/Panoptra/Monitoring/MaskedFrame.h"

namespace merovanta::test {

std::shared_ptr<PrivacyJudge> judgeOf(const IOSConfig& lists, PrivacySettings settings) {
    settings.paintsFixedRectangles = false;
    return std::make_shared<PrivacyJudge>(std::make_shared<PrivacyRules>(lists, settings));
}

std::shared_ptr<PrivacyJudge> secrets() {
    return judgeOf({{"7"}, {}});
}

std::shared_ptr<Outcome> beginPicture(const std::shared_ptr<View>& root, std::shared_ptr<MaskJudge> judge,
                                      PixelBuffer buffer) {
    auto outcome = std::make_shared<Outcome>();
    platform::current().screenCapture().capture(root, std::move(buffer), std::move(judge),
                                                [outcome](std::optional<CapturedFrame> frame) {
                                                    EXPECT_TRUE(platform::current().mainQueue().isCurrent());
                                                    ++outcome->completions;
                                                    outcome->frame = std::move(frame);
                                                });
    return outcome;
}

std::optional<CapturedFrame> takePicture(const std::shared_ptr<View>& root, std::shared_ptr<MaskJudge> judge,
                                         PixelBuffer buffer) {
    const auto outcome = beginPicture(root, std::move(judge), std::move(buffer));
    EXPECT_TRUE(eventually([&] { return outcome->completions > 0; }));
    EXPECT_EQ(outcome->completions, 1);
    return std::move(outcome->frame);
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

Tally film(Scene& scene, int attempts, const std::function<void(int attempt)>& step, const IOSConfig& lists) {
    Tally tally;
    PixelBuffer buffer;
    const auto root = scene.root();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (step) step(attempt);
        QTest::qWait(3);
        auto frame = takePicture(root, judgeOf(lists), std::move(buffer));
        buffer = {};
        if (!frame) continue;
        ++tally.delivered;
        if (secretPixels(frame->pixels) > 0) ++tally.masked;
        MaskedFrame masked(std::move(*frame));
        if (secretPixels(masked.pixels()) > 0) ++tally.leaked;
        buffer = std::move(masked).takeBuffer();
    }
    return tally;
}

}  // namespace merovanta::test
