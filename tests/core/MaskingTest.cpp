#include <gmock/gmock.h>

#include "General/Panoptra/Monitoring/MaskedFrame.h"
#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "General/Panoptra/Util/ClickUtil.h"
#include "General/Panoptra/Util/PrivacyUtils.h"
#include "InMemory/MaskWalkInMemory.h"
#include "support/LibraryTest.h"
#include "support/Picture.h"

namespace merovanta::testing {
namespace {

using inmemory::NativeView;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::uint32_t sentinel = 0xFFFF00FF;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t black = 0xFF000000;

class MaskingTest : public LibraryTest {
 protected:
    MaskingTest() { Merovanta::privacy().setFixedRectangles(true); }

    ~MaskingTest() override {
        Merovanta::privacy().setMaskTextInputs(false);
        Merovanta::privacy().setMaskTexts(false);
        Merovanta::privacy().setMaskPictures(false);
        Merovanta::privacy().setFixedRectangles(true);
    }

    static PrivacyJudge judgeOf(IOSConfig lists, const PrivacySettings& settings = {}) {
        return PrivacyJudge(std::make_shared<PrivacyRules>(std::move(lists), settings));
    }

    [[nodiscard]] std::vector<Rect> areasOf(PrivacyJudge& judge, MaskArea::Kind kind) const {
        std::vector<Rect> rects;
        for (const auto& area : inmemory::findMasks(screen, 1, judge)) {
            if (area.kind == kind) rects.push_back(area.rect);
        }
        return rects;
    }

    /// The rectangles of the service's own rule.
    [[nodiscard]] std::vector<Rect> areas(const IOSConfig& lists) const {
        auto judge = judgeOf(lists);
        return areasOf(judge, MaskArea::Kind::fixed);
    }

    /// Where the views are.
    [[nodiscard]] std::vector<Rect> covered(const IOSConfig& lists,
                                            const PrivacySettings& settings = {}) const {
        auto judge = judgeOf(lists, settings);
        return areasOf(judge, MaskArea::Kind::cover);
    }

    /// A private view that fills a wrapper of its own, as hosts lay them out.
    std::shared_ptr<NativeView> addPrivate(const Rect& frame, long tag) {
        const auto wrapper = screen->add(NativeView::make(frame, white));
        const auto view =
            wrapper->add(NativeView::make({0, 0, frame.width, frame.height}, sentinel, {"Secret", "Field"}));
        view->tag = tag;
        return wrapper;
    }

    void expectNoSentinelLeft() {
        for (const auto& jpeg : service.screenshots())
            EXPECT_FALSE(Picture(jpeg).containsAbout(sentinel));
    }
};

TEST_F(MaskingTest, FindsTheFirstViewWithATagAndAllViewsOfAClass) {
    addPrivate({10, 20, 100, 40}, 12);
    addPrivate({10, 220, 100, 40}, 12);
    screen->add(NativeView::make({5, 400, 50, 50}, white, {"Secret"}))
        ->add(NativeView::make({1, 2, 3, 4}, white, {"Other", "Secret"}));
    EXPECT_THAT(areas({{"12"}, {}}), ElementsAre(Rect{10, 20, 100, 40}));
    EXPECT_THAT(areas({{}, {"Field"}}), ElementsAre(Rect{10, 20, 100, 40}, Rect{10, 220, 100, 40}));
    // A view that does not lie at its superview's origin is taken at twice its offset.
    EXPECT_THAT(areas({{}, {"Secret"}}), ElementsAre(Rect{10, 20, 100, 40}, Rect{10, 220, 100, 40},
                                                     Rect{10, 800, 50, 50}, Rect{7, 404, 3, 4}));
    EXPECT_THAT(areas({{"13"}, {}}), IsEmpty());

    // Each of them is covered where it is, those besides that the rule leaves out.
    EXPECT_THAT(covered({{"12"}, {}}), ElementsAre(Rect{10, 20, 100, 40}, Rect{10, 220, 100, 40}));
    EXPECT_THAT(covered({{}, {"Secret"}}), ElementsAre(Rect{10, 20, 100, 40}, Rect{10, 220, 100, 40},
                                                       Rect{5, 400, 50, 50}, Rect{6, 402, 3, 4}));
}

TEST_F(MaskingTest, BadEntriesAreLoggedAndSkipped) {
    addPrivate({10, 20, 100, 40}, 12);
    platform->app.classes = {"Known"};
    auto judge =
        judgeOf({{"12a", "", " 12", "0x0C", "99999999999999999999", "+12"}, {"Unknown", "Known", "Field"}});
    EXPECT_THAT(areasOf(judge, MaskArea::Kind::fixed), SizeIs(1)) << "one view, named twice";
    PrivacyUtils::logBadEntries(judge);
    EXPECT_THAT(log.lines("[WARNING] PrivacyUtils: Cannot convert tag to integer"), SizeIs(5));
    EXPECT_THAT(log.lines("[WARNING] PrivacyUtils: Cannot convert class name to class"), SizeIs(1));
}

PixelBuffer whitePicture(std::size_t width, std::size_t height) {
    PixelBuffer pixels;
    pixels.resize(width, height);
    std::fill_n(pixels.row(0), width * height, white);
    return pixels;
}

std::ptrdiff_t blackPixels(const PixelBuffer& pixels) {
    return std::count(pixels.row(0), pixels.row(0) + pixels.width() * pixels.height(), black);
}

TEST_F(MaskingTest, OnlyTheOriginIsDividedByTheScale) {
    const MaskedFrame masked(
        {.pixels = whitePicture(600, 300), .masks = {{Rect{30, 60, 100, 40}}}, .scale = 3});
    // (10, 20, 100, 40) in points.
    EXPECT_EQ(blackPixels(masked.pixels()), 300 * 120);
    EXPECT_EQ(masked.pixels().row(60)[30], black);
    EXPECT_EQ(masked.pixels().row(179)[329], black);
    EXPECT_EQ(masked.pixels().row(59)[30], white);
    EXPECT_EQ(masked.pixels().row(60)[29], white);
}

TEST_F(MaskingTest, AreasOutsideThePictureOrBetweenPixelsCoverRatherTooMuch) {
    const auto paint = [](const Rect& area) {
        PixelBuffer pixels = whitePicture(4, 4);
        PrivacyUtils::drawBlackRectangle(area, 1, pixels);
        return blackPixels(pixels);
    };
    EXPECT_EQ(paint({-2, -2, 3, 3}), 1);
    EXPECT_EQ(paint({0.9, 0.9, 0.2, 0.2}), 9);
    EXPECT_EQ(paint({2, 1, 1, 2}), 2);
    EXPECT_EQ(paint({10, 10, 5, 5}), 0);
    EXPECT_EQ(paint({-1e300, -1e300, 2e300, 2e300}), 16);
    EXPECT_EQ(paint({std::nan(""), 1, 2, 1}), 4);
    EXPECT_EQ(paint({1, 1, -5, -5}), 0);
}

TEST_F(MaskingTest, NoPictureOfASessionShowsWhatIsPrivate) {
    service.initReply["ios"] = {{"blacklist", {"12"}}, {"blacklistClasses", {"Field"}}};
    const auto scrolling = addPrivate({10, 20, 100, 40}, 12);
    addPrivate({10, 300, 200, 40}, 0);
    platform->screenCapture().delay = 40ms;
    startSession();
    for (int step = 0; step < 200; ++step) {
        // Moves between the picture and its delivery as well: pixels and areas must be of one moment.
        scrolling->frame.y = 20 + 3.7 * step;
        platform->app.paint();
        advance(50ms);
    }
    EXPECT_GT(service.screenshots().size(), 20);
    expectNoSentinelLeft();
}

TEST_F(MaskingTest, ListsThatChangeWhileAPictureIsUnderWayTakeEffectBeforeItLeaves) {
    addPrivate({10, 20, 100, 40}, 12);
    platform->screenCapture().delay = 200ms;
    Merovanta::panoptra().start();
    advance(400ms);  // the first picture is taken, without masks, and under way
    ASSERT_EQ(platform->screenCapture().captures, 1);
    config().panoptraConfig->iosConfig = IOSConfig{{"12"}, {}};
    advance(5s);
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    expectNoSentinelLeft();

    // A change of the lists alone gives a new picture.
    config().panoptraConfig->iosConfig = IOSConfig{};
    advance(5s);
    EXPECT_THAT(service.screenshots(), SizeIs(2));
}

TEST_F(MaskingTest, APictureThatWasUnderWayAtAStopIsNeverSent) {
    platform->screenCapture().delay = 200ms;
    Merovanta::panoptra().start();
    advance(400ms);
    Merovanta::panoptra().stop();
    service.initReply["ios"]["blacklist"] = {"12"};
    addPrivate({10, 20, 100, 40}, 12);
    platform->app.paint();
    startSession();
    advance(5s);
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    expectNoSentinelLeft();
}

TEST_F(MaskingTest, TheRuleAndThePlaceArePaintedUnlessTheHostWantsThePlaceAlone) {
    service.initReply["ios"]["blacklist"] = {"12"};
    platform->app.screen.scale = 3;
    // By the rule the rectangle lies at (60, 240) / 3 in points; the view lies at (30, 120).
    const auto view = screen->add(NativeView::make({30, 120, 90, 60}, sentinel));
    view->tag = 12;
    Merovanta::privacy().setFixedRectangles(true);
    startSession();
    const auto isBlackAt = [this](std::size_t x, std::size_t y) {
        // The picture has a third of the pixels: one a point.
        return Picture(service.screenshots().back()).isAbout(x, y, black);
    };
    ASSERT_FALSE(service.screenshots().empty());
    EXPECT_TRUE(isBlackAt(75, 150)) << "where the view is";
    EXPECT_TRUE(isBlackAt(25, 100)) << "by the rule";
    EXPECT_FALSE(isBlackAt(15, 60));
    expectNoSentinelLeft();

    // A choice in the middle of a session is for the next one.
    Merovanta::privacy().setFixedRectangles(false);
    paint(0xFFFFFF00);
    advance(1s);
    EXPECT_TRUE(isBlackAt(25, 100));
    Merovanta::panoptra().stop();
    startSession();
    EXPECT_FALSE(isBlackAt(25, 100));
    EXPECT_TRUE(isBlackAt(75, 150));
    expectNoSentinelLeft();
}

TEST_F(MaskingTest, MarksHoldForWhatIsInAViewUntilTheNextMarkAndYieldToTheLists) {
    const auto page = screen->add(NativeView::make({0, 0, 300, 300}, white));
    const auto button = page->add(NativeView::make({10, 10, 50, 20}, white));
    const auto label = button->add(NativeView::make({10, 5, 20, 10}, white));
    const auto listed = page->add(NativeView::make({100, 10, 50, 20}, white));
    const auto inListed = listed->add(NativeView::make({10, 5, 20, 10}, white));
    listed->tag = 5;
    page->masked = true;
    button->masked = false;
    inListed->masked = false;
    label->content = ViewContent::text;
    const auto count = [&](MaskArea::Kind kind) {
        auto judge = judgeOf({{"5"}, {}});
        return areasOf(judge, kind).size();
    };
    EXPECT_EQ(count(MaskArea::Kind::backdrop), 1) << "the page";
    EXPECT_EQ(count(MaskArea::Kind::exempt), 1) << "the button";
    EXPECT_EQ(count(MaskArea::Kind::cover), 2)
        << "the listed view, and what is in it, whatever its mark says";
    label->masked = true;
    EXPECT_EQ(count(MaskArea::Kind::cover), 3) << "an exception of the exception";
    EXPECT_EQ(count(MaskArea::Kind::exempt), 1);
}
TEST_F(MaskingTest, AMarkHoldsWithoutListsAndAnExceptionShowsOnPlainGroundsOnly) {
    const auto page = screen->add(NativeView::make({0, 0, 300, 300}, sentinel));
    const auto button = page->add(NativeView::make({30, 30, 90, 90}, 0xFF00FF00));
    page->masked = true;
    button->masked = false;
    startSession();
    ASSERT_FALSE(service.screenshots().empty());
    const Picture first(service.screenshots().front());
    EXPECT_FALSE(first.containsAbout(sentinel)) << "from the first picture on";
    EXPECT_TRUE(first.containsAbout(0xFF00FF00));
    page->content = ViewContent::text;
    platform->app.paint();
    advance(1s);
    EXPECT_FALSE(Picture(service.screenshots().back()).containsAbout(0xFF00FF00));
    EXPECT_THAT(log.lines("[DEBUG] ViewMonitor: Covered views: 1 (marks: 1)"), SizeIs(1)) << "said once";
}

TEST_F(MaskingTest, PrivateTapsAreNeitherReportedNorPlayedBack) {
    int taps = 0;
    const auto pad = screen->add(NativeView::make({0, 0, 100, 100}, white));
    pad->onTap = screen->onTap = [&taps] { ++taps; };
    startSession();
    pad->keepsTapsPrivate = true;
    platform->tapRecognizers().tap({50, 50});
    platform->tapRecognizers().tap({50, 60});
    EXPECT_THAT(log.lines("[DEBUG] ViewMonitor: Got click at"), IsEmpty());
    EXPECT_THAT(log.lines("[WARNING] ViewMonitor: Taps in views"), SizeIs(1));
    platform->tapRecognizers().tap({150, 50});
    EXPECT_THAT(log.lines("[DEBUG] ViewMonitor: Got click at"), SizeIs(1));
    ClickUtil::playBack({.x = 50, .y = 50});
    EXPECT_EQ(taps, 0);
    ClickUtil::playBack({.x = 150, .y = 50});
    EXPECT_EQ(taps, 1);
    pad->keepsTapsPrivate = false;
    ClickUtil::playBack({.x = 50, .y = 50});
    EXPECT_EQ(taps, 2);
}

TEST_F(MaskingTest, AbsurdListsAreAnsweredAndNamedBriefly) {
    addPrivate({10, 20, 100, 40}, 12);
    IOSConfig lists{{"12", "12", std::string(100'000, '9')}, {std::string(100'000, 'x'), "evil\nline"}};
    for (int entry = 0; entry < 1000; ++entry) {
        lists.blacklist.push_back(std::to_string(1000 + entry));
        lists.blacklistClasses.push_back("Field");
    }
    auto judge = judgeOf(lists);
    EXPECT_THAT(areasOf(judge, MaskArea::Kind::cover), ElementsAre(Rect{10, 20, 100, 40}));
    const std::string summary = PrivacyUtils::summary(judge);
    EXPECT_THAT(summary,
                ::testing::StartsWith("Covered views: 1 (tag 12: 1, class Field: 1); matched nothing: "));
    EXPECT_LT(summary.size(), 2000);
    EXPECT_EQ(summary.find('\n'), std::string::npos);
}

}  // namespace
}  // namespace merovanta::testing
