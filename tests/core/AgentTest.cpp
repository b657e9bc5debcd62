#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/Util/PngDecoder.h"
#include "support/LibraryTest.h"
#include "support/Png.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using inmemory::NativeView;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// The picture with a text packed beside its pixels.
std::string withText(std::string picture, const std::string& text) {
    std::string chunk;
    for (int shift = 24; shift >= 0; shift -= 8)
        chunk += static_cast<char>(text.size() >> shift);
    return picture.insert(33, chunk + "zTXt" + text + "sum!");
}

class AgentTest : public LibraryTest {
 protected:
    AgentTest() {
        service.override = [this](const HttpRequest& request) -> std::optional<HttpReply> {
            if (FakeService::path(request) != "api/in/i18n") return std::nullopt;
            return HttpSessionInMemory::reply(200, texts.dump());
        };
    }

    /// Plays the agent.
    void say(const nlohmann::json& message) {
        const auto parser = Injection::resolve<BidirectionalMessageParser>();
        parser->handOver({parser->read(message)});
        advance(0s);
    }

    void draw(const std::string& picture) { say({{"d", {{"u", picture}}}}); }

    [[nodiscard]] std::size_t drawings() const {
        return static_cast<std::size_t>(std::count_if(
            screen->subviews.begin(), screen->subviews.end(),
            [](const auto& view) { return view->classNames.front() == "PassthroughUIImageView"; }));
    }

    nlohmann::json texts = {{"ui.mobile.confirm.title", "Share?"},
                            {"ui.mobile.confirm.message", "An agent asks."},
                            {"ui.confirm.accept", "Yes"},
                            {"ui.confirm.decline", "No"}};
    std::vector<std::string> events;
};

TEST_F(AgentTest, DrawingsStackAtHalfOpacityAndLeaveOneByOne) {
    draw("data:image/png;base64," + base64(png(16, 12, 0x80FF0000)));
    EXPECT_EQ(drawings(), 1);
    const auto& pixels = platform->imageOverlays().lastPixels;
    EXPECT_EQ(pixels.width(), 16);
    EXPECT_EQ(pixels.height(), 12);
    EXPECT_EQ(pixels.row(2)[3], 0x80800000U);  // the colour multiplied by the alpha
    EXPECT_EQ(platform->imageOverlays().lastOpacity, 0.5);
    EXPECT_EQ(screen->subviews.back()->frame, screen->frame);
    advance(2s);
    draw(base64(png(8, 8, 0xFF00FF00)));
    EXPECT_EQ(drawings(), 2);
    advance(3s);
    EXPECT_EQ(drawings(), 1);
    advance(2s);
    EXPECT_EQ(drawings(), 0);
    EXPECT_EQ(timers(), 0);
}

TEST_F(AgentTest, ADrawingThatIsNoneIsIgnored) {
    const std::string good = png(8, 8, 0xFFFFFFFF);
    for (const std::string text :
         {"", "!", "data:image/png;base64,", "iVBORw0KGgo=", "A", "AAAA=", "====", "AA=A"}) {
        draw(text);
    }
    draw(base64(good) + "\n");
    draw(base64(good.substr(0, good.size() / 2)));
    draw(std::string(9'000'000, 'A'));
    std::string huge = good;
    huge.replace(16, 8,
                 std::string("\0\0\x1E\x01\0\0\x10\xE0", 8));  // a column more than the largest screen has
    draw(base64(huge));
    say({{"d", "data:image/png;base64,"}});
    say({{"d", {{"u", 7}}}});
    EXPECT_EQ(drawings(), 0);
    for (const auto& [width, height] : {std::pair(1U, 1U), {7U, 900U}, {900U, 7U}})
        draw(base64(png(width, height, 0)));
    EXPECT_THAT(log.lines("[WARNING] Drawings: Drawing is too small"), SizeIs(3));
    EXPECT_EQ(drawings(), 0);
    std::string prefixed;
    for (int i = 0; i < 300'000; ++i)
        prefixed += "data:image/png;base64,";
    draw(prefixed + base64(good));
    EXPECT_EQ(drawings(), 1);
}

TEST_F(AgentTest, AFloodOfDrawingsIsBounded) {
    const std::string picture = png(5120, 2880, 0xFF000000);
    const std::string large = base64(withText(picture, std::string(12 << 20, 'x')));
    draw(base64(withText(picture, std::string(24 << 20, 'x'))));
    EXPECT_EQ(drawings(), 0) << "however it is packed, no drawing is that large";
    for (int i = 0; i < 3; ++i)
        draw(large);
    EXPECT_EQ(drawings(), 2);
    EXPECT_THAT(log.lines("[WARNING] Drawings: Too many drawings"), SizeIs(1));
    advance(5s);
    for (int i = 0; i < 200; ++i)
        draw(base64(png(8, 8, 0)));
    EXPECT_EQ(drawings(), 10);
    platform->app.root.reset();
    advance(5s);
    draw(base64(png(8, 8, 0)));
    EXPECT_EQ(drawings(), 0);
    EXPECT_TRUE(log.contains("[WARNING] Drawings: Cannot show drawing"));
    EXPECT_EQ(timers(), 0);
}

TEST_F(AgentTest, ClicksReachTheDeepestViewThatTakesThem) {
    platform->app.screen.scale = 3;
    const auto card = screen->add(NativeView::make({100, 100, 100, 100}, 0));
    const auto button = card->add(NativeView::make({10, 10, 20, 20}, 0));
    card->add(NativeView::make({0, 0, 100, 100}, 0));  // lets touches through
    card->onTap = [this] { events.emplace_back("card"); };
    button->onTap = [this] { events.emplace_back("button"); };
    say({{"x", 345}, {"y", 345}});
    say({{"x", 306.9}, {"y", 591}});
    EXPECT_THAT(events, ElementsAre("button", "card"));
    const auto misses = [this] { return log.lines("[WARNING] ClickUtil: View not found").size(); };
    say({{"x", 10}, {"y", 10}});
    say({{"x", -5}, {"y", 345}});
    say({{"x", 9e15}, {"y", 345}});
    EXPECT_EQ(misses(), 3);
    platform->app.root.reset();
    say({{"x", 345}, {"y", 345}});
    EXPECT_EQ(misses(), 4);

    say({{"x", 345}});
    say({{"y", 345}});
    say({{"x", "345"}, {"y", 345}});
    say({{"x", 1e300}, {"y", 345}});
    EXPECT_EQ(misses(), 4);
}

TEST_F(AgentTest, AllPartsOfAMessageAreFollowedInOrder) {
    startSession();
    screen->onTap = [this] {
        events.emplace_back("click");
        EXPECT_TRUE(Injection::resolve<Panoptra>()->isRunning());
    };
    Merovanta::panoptra().registerCallbacks({}, [this] {
        events.emplace_back("stop");
        EXPECT_TRUE(Merovanta::panoptra().connected());
        EXPECT_FALSE(config().panoptraConfig->increasedPollingFrequency.has_value());
    });
    say({{"d", {{"u", base64(png(8, 8, 0))}}},
         {"x", 1},
         {"y", 1},
         {"a", "c"},
         {"co", {{"s", true}, {"b", false}, {"opt", true}}}});
    EXPECT_TRUE(config().panoptraConfig->increasedPollingFrequency.value_or(false));
    advance(1s);
    EXPECT_THAT(events, ElementsAre("click", "stop"));
    EXPECT_EQ(drawings(), 1);
    ASSERT_THAT(platform->alerts().presented, SizeIs(1));
    platform->alerts().answer(true);
    advance(0s);
    EXPECT_EQ(config().panoptraConfig->optIn, true);
    // The session was closed, then started anew by force.
    const auto inits = service.requests("POST", "api/in/im/c");
    ASSERT_THAT(inits, SizeIs(2));
    EXPECT_NE(inits[1].body.find(R"("init":true)"), std::string::npos);
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
}

TEST_F(AgentTest, TheVisitorIsAskedOnceAtATimeAndConsentIsReported) {
    startSession();
    const auto accepted = [this] {
        std::size_t count = 0;
        for (const auto& entry : service.requests("POST", "api/in/io/l"))
            count += entry.body.find(R"("t":"ca")") != std::string::npos ? 1 : 0;
        return count;
    };
    for (int i = 0; i < 3; ++i)
        say({{"co", {{"opt", true}}}});
    advance(1s);
    const auto& alerts = platform->alerts().presented;
    ASSERT_THAT(alerts, SizeIs(1));
    EXPECT_EQ(alerts[0].title, "Share?");
    EXPECT_EQ(alerts[0].message, "An agent asks.");
    EXPECT_EQ(alerts[0].accept, "Yes");
    EXPECT_EQ(alerts[0].decline, "No");
    platform->alerts().answer(false);
    advance(1s);
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    EXPECT_EQ(accepted(), 1);  // that of the start

    say({{"co", {{"opt", false}}}});
    EXPECT_THAT(alerts, SizeIs(1));
    advance(30s);
    say({{"co", {{"opt", true}}}});
    ASSERT_THAT(alerts, SizeIs(2));
    platform->alerts().answer(true);
    advance(1s);
    EXPECT_EQ(config().panoptraConfig->optIn, true);
    EXPECT_EQ(accepted(), 2);
}

TEST_F(AgentTest, AnAnswerCountsOnlyForTheSessionThatWasAsked) {
    startSession();
    say({{"co", {{"opt", true}}}});
    Merovanta::panoptra().stop();
    startSession();
    platform->alerts().answer(true);
    advance(1s);
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    EXPECT_THAT(platform->alerts().presented, IsEmpty()) << "asked before the texts had come";
    say({{"co", {{"opt", true}}}});
    advance(1s);
    ASSERT_THAT(platform->alerts().presented, SizeIs(1));
    Merovanta::panoptra().stop();
    startSession();
    platform->alerts().answer(true);
    advance(1s);
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    say({{"co", {{"opt", true}}}});
    Merovanta::panoptra().stop();
    startSession();
    say({{"co", {{"opt", true}}}});
    say({{"co", {{"opt", true}}}});
    EXPECT_THAT(platform->alerts().presented, SizeIs(3)) << "a question left over hides no other";
    platform->app.resignActive();
    advance(6s);
    platform->app.becomeActive();
    advance(1s);
    platform->alerts().answer(true);
    advance(0s);
    EXPECT_EQ(config().panoptraConfig->optIn, true) << "back from the background it is the same session";
    say({{"co", {{"opt", true}}}});
    advance(1s);
    ASSERT_THAT(platform->alerts().presented, SizeIs(4));
    platform->alerts().answer(true);
    Merovanta::user().tag({.id = "another"});
    advance(0s);
    EXPECT_EQ(config().panoptraConfig->optIn, false) << "another visitor was asked";
}

TEST_F(AgentTest, WhatIsPackedBesideThePixelsIsNotUnpacked) {
    // A text chunk with a wrong checksum would fail the picture if it were looked at.
    std::string picture = withText(png(3, 3, 0xFF0000FF), std::string("k\0\0garbage", 10));
    EXPECT_TRUE(PngDecoder::decode(picture).has_value());
    picture[33] = '\x7F';  // a length beyond the end
    EXPECT_FALSE(PngDecoder::decode(picture).has_value());
    EXPECT_FALSE(PngDecoder::decode(picture.substr(0, 32)).has_value());
}

TEST_F(AgentTest, AFloodOfMessagesIsFollowedOneInATurnAndBounded) {
    startSession();
    int taps = 0;
    screen->onTap = [&] { ++taps; };
    const auto parser = Injection::resolve<BidirectionalMessageParser>();
    const auto clicks = [&](std::size_t count) {
        parser->handOver(std::vector<BidirectionalMessage>(count, parser->read({{"x", 1}, {"y", 1}})));
    };
    clicks(3);
    EXPECT_EQ(taps, 1);
    advance(0s);
    EXPECT_EQ(taps, 3);
    clicks(2000);
    advance(0s);
    EXPECT_EQ(taps, 1003);
    clicks(10);
    Merovanta::panoptra().stop();
    advance(0s);
    EXPECT_EQ(taps, 1004);
    EXPECT_THAT(log.lines("[WARNING] BidirectionalMessageHandler: Too many messages"), SizeIs(1));
}

TEST_F(AgentTest, ARefusalHoldsUntilTheVisitorStartsAnew) {
    startSession();
    const auto ask = [this] { say({{"co", {{"opt", true}}}}), advance(1s); };
    const auto& asked = platform->alerts().presented;
    ask();
    platform->alerts().answer(false);
    advance(28s);
    ask();
    EXPECT_THAT(asked, SizeIs(1));
    say({{"a", "c"}, {"co", {{"s", true}, {"opt", true}}}});
    ask();
    EXPECT_THAT(asked, SizeIs(1)) << "a start by the agent is none by the visitor";
    advance(2s);
    ask();
    EXPECT_THAT(asked, SizeIs(2));
    platform->alerts().answer(false);
    advance(1s);
    Merovanta::panoptra().stop();
    startSession();
    ask();
    EXPECT_THAT(asked, SizeIs(3));
}

TEST_F(AgentTest, AQuestionGoesWithItsSessionAndNoneComesAfterIt) {
    startSession();
    const auto ask = [this] { say({{"co", {{"opt", true}}}}); };
    ask();
    advance(1s);
    EXPECT_TRUE(platform->alerts().isOpen());
    Merovanta::panoptra().stop();
    EXPECT_FALSE(platform->alerts().isOpen());
    ask();
    advance(1s);
    EXPECT_FALSE(platform->alerts().isOpen());
    say({{"a", "c"}, {"co", {{"opt", true}}}});
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("lost"); };
    say({{"co", {{"s", true}, {"opt", true}}}});
    advance(1s);
    EXPECT_FALSE(platform->alerts().isOpen()) << "the start that it belongs to has failed";
    EXPECT_TRUE(log.contains("[WARNING] BidirectionalMessageHandler: Cannot start CoBrowsing: lost"));
    EXPECT_THAT(platform->alerts().presented, SizeIs(2));
}

TEST_F(AgentTest, ThereIsAlwaysAWayToDecline) {
    texts.erase("ui.confirm.decline");
    for (int round = 0; round < 2; ++round) {
        Injection::discard();
        startSession();
        say({{"co", {{"opt", true}}}});
        advance(1s);
        EXPECT_EQ(platform->alerts().presented.back().decline, "Decline");
        texts["ui.confirm.decline"] = " \n";
    }
}

TEST_F(AgentTest, NobodyConsentsToAnEmptyQuestion) {
    startSession();
    texts["ui.confirm.accept"] = " ";
    say({{"co", {{"opt", true}}}});
    advance(1s);
    EXPECT_THAT(platform->alerts().presented, IsEmpty());
    EXPECT_TRUE(log.contains("[WARNING] ConsentDialog: Cannot ask for consent"));
    say({{"co", {{"opt", true}}}});
    EXPECT_THAT(log.lines("[WARNING] ConsentDialog: Cannot ask for consent"), SizeIs(2));
}

}  // namespace
}  // namespace merovanta::testing
