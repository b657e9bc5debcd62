#include <algorithm>
#include <atomic>

#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Finds everything with this tag private, and paints its frame too.
class TagJudge : public MaskJudge {
 public:
    explicit TagJudge(long tag) : mTag(tag) {}

    void begin(bool /*anyMarked*/) override { ++walks; }
    [[nodiscard]] std::optional<std::size_t> classEntry(std::string_view) const override {
        return std::nullopt;
    }
    [[nodiscard]] MaskVerdict enter(const ViewTraits& view) override {
        ++mDepth;
        if (view.tag == mTag) mPrivateDepth = std::min(mPrivateDepth, mDepth);
        MaskVerdict verdict{.paintsFixed = view.tag == mTag, .isNamed = view.tag == mTag};
        if (mDepth >= mPrivateDepth) verdict.reason = MaskReason{.kind = MaskReason::Kind::tag};
        return verdict;
    }
    void leave() override {
        if (mDepth == mPrivateDepth) mPrivateDepth = 1000;
        --mDepth;
    }

    std::atomic<int> walks{0};

 private:
    long mTag;
    int mDepth = 0;
    int mPrivateDepth = 1000;
};

struct Outcome {
    int completions = 0;
    std::optional<CapturedFrame> frame;
};

class Capture : public ConformanceTest {
 protected:
    std::shared_ptr<Outcome> begin(const std::shared_ptr<View>& of, PixelBuffer buffer = {}) {
        auto outcome = std::make_shared<Outcome>();
        judge = std::make_shared<TagJudge>(2);
        platform().screenCapture().capture(of, std::move(buffer), judge,
                                           [this, outcome](std::optional<CapturedFrame> frame) {
                                               EXPECT_TRUE(isOnMain());
                                               ++outcome->completions;
                                               outcome->frame = std::move(frame);
                                           });
        return outcome;
    }

    /// A picture in which the secret field is private.
    std::optional<CapturedFrame> capture(const std::shared_ptr<View>& of, PixelBuffer buffer = {}) {
        const auto outcome = begin(of, std::move(buffer));
        EXPECT_TRUE(passUntil([&] { return outcome->completions > 0; }));
        EXPECT_LE(judge->walks, 1);
        return std::move(outcome->frame);
    }

    /// The one area of this kind.
    static Rect maskOf(const CapturedFrame& frame, MaskArea::Kind kind) {
        std::vector<Rect> rects;
        for (const MaskArea& area : frame.masks) {
            if (area.kind == kind) rects.push_back(area.rect);
        }
        EXPECT_EQ(rects.size(), 1);
        return rects.empty() ? Rect() : rects.front();
    }

    std::shared_ptr<TagJudge> judge;

    std::uint64_t serial() { return platform().screenCapture().paintSerial(*root()); }
};

std::uint32_t colorAt(const CapturedFrame& frame, double x, double y) {
    return frame.pixels.row(
        static_cast<std::size_t>(y * frame.scale))[static_cast<std::size_t>(x * frame.scale)];
}

TEST_F(Capture, ShowsTheViewsAndMasksOfOneFrameAtTheScreensScale) {
    harness->show(Page::views);
    const auto frame = capture(root());
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
    // Its frame, taken as if it were in its own coordinates.
    EXPECT_EQ(maskOf(*frame, MaskArea::Kind::fixed), (Rect{40, 80, 60, 30}));
    const Rect mask = maskOf(*frame, MaskArea::Kind::cover);
    EXPECT_NEAR(mask.x, 30 * scale, 2);
    EXPECT_NEAR(mask.y, 60 * scale, 2);
    EXPECT_NEAR(mask.x + mask.width, 90 * scale, 2);
    EXPECT_NEAR(mask.y + mask.height, 90 * scale, 2);
}

TEST_F(Capture, TheMasksCoverWhatMovesBetweenPaints) {
    harness->show(Page::views);
    // Used again and again: what is old in it would lie outside.
    PixelBuffer buffer;
    int delivered = 0;
    for (int step = 0; step < 20; ++step) {
        harness->move(2, {step * 7.0, step * 8.0});
        auto frame = capture(root(), std::move(buffer));
        buffer = {};
        if (!frame) continue;
        ++delivered;
        int seen = 0;
        const Rect pixels = maskOf(*frame, MaskArea::Kind::cover);
        const double scale = frame->scale;
        const Rect mask{pixels.x / scale, pixels.y / scale, pixels.width / scale, pixels.height / scale};
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

    const auto frame = capture(root());
    ASSERT_TRUE(frame);
    harness->pass(200ms);
    EXPECT_EQ(serial(), frame->paintSerial) << "a picture makes nothing look painted";

    harness->move(2, {50, 60});
    harness->paint();
    EXPECT_NE(serial(), frame->paintSerial);
    const auto next = capture(root());
    ASSERT_TRUE(next);
    EXPECT_NE(next->paintSerial, frame->paintSerial);
}

TEST_F(Capture, GivesNothingWithoutAWindowAndCompletesOnce) {
    harness->show(Page::views);
    const auto screen = root();
    EXPECT_TRUE(capture(screen));
    EXPECT_EQ(judge->walks, 1);
    harness->hide();
    EXPECT_FALSE(capture(screen));
    harness->show(Page::views);
    const auto gone = root();
    const auto outcome = begin(gone);
    harness->close();
    ASSERT_TRUE(passUntil([&] { return outcome->completions > 0; }));
    harness->pass(100ms);
    EXPECT_EQ(outcome->completions, 1);
    EXPECT_FALSE(capture(gone));
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
