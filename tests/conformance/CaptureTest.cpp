#include <atomic>

#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Outcome {
    std::atomic<int> providerCalls{0};
    int completions = 0;
    std::optional<CapturedFrame> frame;
};

class Capture : public ConformanceTest {
 protected:
    std::shared_ptr<Outcome> begin(const std::shared_ptr<View>& of, ScreenCapture::MaskProvider masks,
                                   PixelBuffer buffer = {}) {
        auto outcome = std::make_shared<Outcome>();
        platform().screenCapture().capture(
            of, std::move(buffer),
            [outcome, masks = std::move(masks)] {
                ++outcome->providerCalls;
                return masks();
            },
            [this, outcome](std::optional<CapturedFrame> frame) {
                EXPECT_TRUE(isOnMain());
                ++outcome->completions;
                outcome->frame = std::move(frame);
            });
        return outcome;
    }

    std::optional<CapturedFrame> capture(const std::shared_ptr<View>& of, ScreenCapture::MaskProvider masks,
                                         PixelBuffer buffer = {}) {
        const auto outcome = begin(of, std::move(masks), std::move(buffer));
        EXPECT_TRUE(passUntil([&] { return outcome->completions > 0; }));
        EXPECT_LE(outcome->providerCalls, 1);
        return std::move(outcome->frame);
    }

    /// Masks the secret field where it is.
    ScreenCapture::MaskProvider secret() {
        return [screen = root(), hidden = view(2)] {
            return std::vector<MaskArea>{{hidden->convert(hidden->bounds(), *screen), hidden}};
        };
    }

    std::uint64_t serial() { return platform().screenCapture().paintSerial(*root()); }
};

std::uint32_t colorAt(const CapturedFrame& frame, double x, double y) {
    return frame.pixels.row(
        static_cast<std::size_t>(y * frame.scale))[static_cast<std::size_t>(x * frame.scale)];
}

TEST_F(Capture, ShowsTheViewsAndMasksOfOneFrameAtTheScreensScale) {
    harness->show(Page::views);
    const auto frame = capture(root(), secret());
    ASSERT_TRUE(frame);
    const double scale = platform().application().mainScreen().scale;
    EXPECT_EQ(frame->scale, scale);
    EXPECT_EQ(frame->pixels.width(), static_cast<std::size_t>(300 * scale));
    EXPECT_EQ(frame->pixels.height(), static_cast<std::size_t>(400 * scale));
    EXPECT_EQ(colorAt(*frame, 299, 399), white);
    EXPECT_EQ(colorAt(*frame, 21, 239), blue);
    EXPECT_EQ(colorAt(*frame, 31, 61), red);
    EXPECT_EQ(colorAt(*frame, 88, 72), green) << "in front of the red one";
    EXPECT_EQ(colorAt(*frame, 119, 301), grey);
    ASSERT_EQ(frame->masks.size(), 1);
    EXPECT_EQ(frame->masks[0].rect, (Rect{30, 60, 60, 30}));
    EXPECT_EQ(frame->masks[0].view->identity(), view(2)->identity());
}

TEST_F(Capture, TheMasksCoverWhatMovesBetweenPaints) {
    harness->show(Page::views);
    PixelBuffer buffer;
    int delivered = 0;
    for (int step = 0; step < 20; ++step) {
        harness->move(2, {step * 7.0, step * 8.0});
        auto frame = capture(root(), secret(), std::move(buffer));
        buffer = {};
        if (!frame) continue;
        ++delivered;
        int seen = 0;
        const Rect mask = frame->masks.at(0).rect;
        for (int place = 0; place < 300 * 400; ++place) {
            const int row = place / 300;
            const double x = place % 300 + 0.5;
            const double y = row + 0.5;
            if (colorAt(*frame, x, y) != red) continue;
            ++seen;
            ASSERT_TRUE(x > mask.x && x < mask.x + mask.width && y > mask.y && y < mask.y + mask.height)
                << x << ", " << y << " in step " << step;
        }
        EXPECT_GT(seen, 0);
        buffer = std::move(frame->pixels);
    }
    EXPECT_GT(delivered, 0);
}

TEST_F(Capture, TheSerialChangesWithEachPaintAndOnlyThen) {
    harness->show(Page::views);
    // A new window may paint some frames more.
    harness->pass(200ms);
    const auto first = serial();
    harness->pass(200ms);
    EXPECT_EQ(serial(), first) << "an idle screen";

    const auto frame = capture(root(), secret());
    ASSERT_TRUE(frame);
    harness->pass(200ms);
    EXPECT_EQ(serial(), frame->paintSerial) << "a picture makes nothing look painted";

    harness->move(2, {50, 60});
    harness->paint();
    EXPECT_NE(serial(), frame->paintSerial);
    const auto next = capture(root(), secret());
    ASSERT_TRUE(next);
    EXPECT_NE(next->paintSerial, frame->paintSerial);
}

TEST_F(Capture, ShowsNothingOldInAReusedBuffer) {
    harness->show(Page::views);
    auto first = capture(root(), secret());
    ASSERT_TRUE(first);
    harness->move(2, {50, 60});
    harness->paint();
    const auto second = capture(root(), secret(), std::move(first->pixels));
    ASSERT_TRUE(second);
    EXPECT_EQ(colorAt(*second, 31, 61), blue) << "the old picture is gone";
    EXPECT_EQ(colorAt(*second, 71, 120), red);
}

TEST_F(Capture, GivesNothingWithoutMasksOrAWindowAndCompletesOnce) {
    harness->show(Page::views);
    const auto screen = root();
    const auto masks = secret();
    EXPECT_FALSE(capture(screen, [] { return std::nullopt; }));
    EXPECT_TRUE(capture(screen, masks)) << "and all is well again";
    harness->hide();
    EXPECT_FALSE(capture(screen, masks));
    harness->show(Page::views);
    const auto gone = root();
    const auto outcome = begin(gone, secret());
    harness->close();
    ASSERT_TRUE(passUntil([&] { return outcome->completions > 0; }));
    harness->pass(100ms);
    EXPECT_EQ(outcome->completions, 1);
    EXPECT_FALSE(capture(gone, [] { return std::vector<MaskArea>(); }));
    static_cast<void>(platform().screenCapture().paintSerial(*gone));
}

class Taps : public ConformanceTest {
 protected:
    Taps() { harness->show(Page::views); }

    std::unique_ptr<TapRecognizer> recognizer(
        TapRecognizerFactory::Taps taps = TapRecognizerFactory::Taps::visitors) {
        return platform().tapRecognizers().create(
            [this](const TapRecognizer& from) {
                if (from.state() != TapRecognizer::State::ended) return;
                EXPECT_TRUE(isOnMain());
                inRoot.push_back(from.locationIn(*root()));
                inSecret.push_back(from.locationIn(*view(2)));
            },
            taps);
    }

    std::vector<Point> inRoot;
    std::vector<Point> inSecret;
};

TEST_F(Taps, AreReportedWithTheirPlaceAndLeftToTheHost) {
    const auto taps = recognizer();
    ASSERT_NE(taps, nullptr);
    harness->tap({40, 80});
    EXPECT_THAT(inRoot, IsEmpty()) << "not attached yet";
    taps->attach(*root());
    taps->attach(*root());
    harness->tap({40, 310});
    harness->tap({290, 390});
    EXPECT_THAT(inRoot, ElementsAre(Point{40, 310}, Point{290, 390}));
    EXPECT_THAT(inSecret, ElementsAre(Point{10, 250}, Point{260, 330}));
    EXPECT_EQ(harness->hostTaps().value_or(1), 1);
}

TEST_F(Taps, ComeFromTheWatchedViewUntilDetachmentOrDestruction) {
    auto taps = recognizer();
    taps->attach(*root());
    taps->attach(*view(1));
    harness->tap({290, 390});
    EXPECT_THAT(inRoot, IsEmpty());
    harness->tap({40, 80});
    EXPECT_THAT(inRoot, ElementsAre(Point{40, 80}));
    taps->detach();
    taps->detach();
    harness->tap({40, 80});
    taps->attach(*root());
    taps.reset();
    harness->tap({40, 80});
    EXPECT_EQ(inRoot.size(), 1);
    taps = recognizer();
    taps->attach(*root());
    harness->close();
}

TEST_F(Taps, ThatArePlayedBackAreReportedToThoseWhoAskForThem) {
    const auto visitors = recognizer();
    visitors->attach(*root());
    EXPECT_TRUE(platform().tapPlayer().tap(*root(), {40, 310}));
    EXPECT_THAT(inRoot, IsEmpty());
    const auto everyones = recognizer(TapRecognizerFactory::Taps::everyones);
    everyones->attach(*root());
    EXPECT_TRUE(platform().tapPlayer().tap(*root(), {40, 310}));
    EXPECT_THAT(inRoot, ElementsAre(Point{40, 310}));
    harness->tap({40, 310});
    EXPECT_EQ(inRoot.size(), 3) << "both";
}

TEST_F(Taps, AnActionMayDestroyAnyRecognizer) {
    std::vector<std::unique_ptr<TapRecognizer>> all;
    int reports = 0;
    for (int count = 0; count < 3; ++count) {
        all.push_back(platform().tapRecognizers().create(
            [&, kept = std::make_shared<int>(1)](const TapRecognizer&) {
                all.clear();
                reports += *kept;
            },
            TapRecognizerFactory::Taps::visitors));
        all.back()->attach(*root());
    }
    harness->tap({40, 80});
    harness->tap({40, 80});
    EXPECT_EQ(reports, 1);
}

}  // namespace
}  // namespace merovanta::conformance
