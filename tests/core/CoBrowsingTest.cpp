#include "General/CoBrowsing/CoBrowsing.h"

#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/User/User.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using inmemory::NativeView;
using Element = WidgetView::Element;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class CoBrowsingTest : public LibraryTest {
 protected:
    CoBrowsingTest() {
        service.override = [this](const HttpRequest& request) -> std::optional<HttpReply> {
            if (FakeService::path(request) == "api/in/i18n")
                return HttpSessionInMemory::reply(200, texts.dump());
            if (FakeService::path(request) == "api/in/co" && !channelReplies.empty()) {
                const auto reply = channelReplies.front();
                channelReplies.erase(channelReplies.begin());
                return HttpSessionInMemory::reply(200, reply);
            }
            return std::nullopt;
        };
        Merovanta::panoptra().registerCallbacks({}, {});
    }

    /// Starts by the facade and lets it come about.
    void start() {
        Merovanta::coBrowsing().startWith([this] { outcomes.emplace_back("started"); },
                                          [this](const std::string& error) { outcomes.push_back(error); });
        advance(1s);
    }

    [[nodiscard]] std::string text() { return widget() ? widget()->text : "(no widget)"; }

    [[nodiscard]] std::shared_ptr<inmemory::WidgetsInMemory::Shown> widget() {
        return platform->widgets().shown();
    }

    nlohmann::json texts = {{"ui.mobile.connecting", "One moment"}, {"ui.mobile.error", "Sorry"}};
    std::vector<std::string> channelReplies;
    std::vector<std::string> outcomes;
};

TEST_F(CoBrowsingTest, TheWidgetGoesFromConnectingToTheShareCode) {
    const std::string sessionId = *config().visitConfig->sessionId;
    service.initReply["cA"] = true;
    service.initReply["s"] = false;  // not needed: the start is forced
    Merovanta::coBrowsing().start();
    advance(30ms);
    EXPECT_EQ(text(), "One moment");
    EXPECT_THAT(widget()->hidden, UnorderedElementsAre(Element::showButton, Element::chatButton));
    EXPECT_EQ(screen->subviews.back()->classNames.front(), "DefaultUIView");
    advance(1s);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    EXPECT_THAT(widget()->hidden, UnorderedElementsAre(Element::showButton));
    EXPECT_EQ(config().visitConfig->sessionId, sessionId);
    EXPECT_NE(service.requests("POST", "api/in/im/c")[0].body.find(R"("init":true)"), std::string::npos);
    EXPECT_THAT(service.screenshots(), SizeIs(1));

    for (int i = 0; i < 3; ++i)
        widget()->actions.hideClicked();
    EXPECT_THAT(widget()->hidden, UnorderedElementsAre(Element::hideButton, Element::buttonGroup));

    const auto actions = widget()->actions;
    actions.closeClicked();
    advance(1s);
    EXPECT_EQ(widget(), nullptr);
    EXPECT_THAT(screen->subviews, IsEmpty());
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
    actions.closeClicked();
    start();
    EXPECT_THAT(outcomes, ElementsAre("started"));
}

TEST_F(CoBrowsingTest, AnAgentStartsItOnceByItsChannel) {
    Injection::resolve<CoBrowsing>()->startPolling();
    channelReplies = {"[]", "", R"([{"c":"SCB","p":"{}"}])", "[]",
                      R"([{"c":"SCB","p":"{}"},{"c":"SCB","p":""}])"};
    advance(6100ms);
    EXPECT_EQ(widget(), nullptr);
    advance(4s);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    EXPECT_THAT(log.lines("[DEBUG] CoBrowsing: Got SCB message"), SizeIs(1));
    advance(10s);
    EXPECT_EQ(platform->widgets().made, 1);
    for (int request = 0; request < 2; ++request)
        expectError("[ERROR] CoBrowsing: Starting CoBrowsing failed: CoBrowsing is already started");
}

TEST_F(CoBrowsingTest, ASessionThatCannotStartShowsItsErrorUntilItIsClosed) {
    texts.clear();
    startSession();
    start();
    expectError("[ERROR] CoBrowsing: Starting Panoptra failed: Panoptra is already started");
    expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: Panoptra is already started");
    EXPECT_EQ(text(), "ERROR");
    start();
    expectError("[ERROR] CoBrowsing: Starting UI failed with error: UI is already shown");
    expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: UI is already shown");
    EXPECT_EQ(platform->widgets().made, 1);
    Merovanta::coBrowsing().stop();
    service.initReply["cA"] = true;
    platform->tapRecognizers().isBroken = true;
    start();
    expectError("[ERROR] CoBrowsing: Starting Panoptra failed: Cannot register click listener");
    expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: Cannot register click listener");
    EXPECT_THAT(widget()->hidden, UnorderedElementsAre(Element::showButton)) << "the chat is there to ask";
    platform->tapRecognizers().isBroken = false;
    Merovanta::coBrowsing().stop();
    start();
    EXPECT_THAT(outcomes, ElementsAre("Panoptra is already started", "UI is already shown",
                                      "Cannot register click listener", "started"));
}

TEST_F(CoBrowsingTest, AnAgentMayInviteAgainAfterAFailureAndOneWhomTheServiceLeavesAlone) {
    service.initReply["x"] = true;
    start();
    EXPECT_EQ(widget(), nullptr) << "nobody connects any more";
    EXPECT_EQ(timers(), 0);
    service.initReply["x"] = false;
    platform->tapRecognizers().isBroken = true;
    start();
    expectError("[ERROR] CoBrowsing: Starting Panoptra failed: Cannot register click listener");
    expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: Cannot register click listener");
    EXPECT_EQ(text(), "Sorry");
    platform->tapRecognizers().isBroken = false;
    Injection::resolve<CoBrowsing>()->startPolling();
    channelReplies = {R"([{"c":"SCB","p":"{}"}])"};
    advance(4s);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    EXPECT_THAT(outcomes,
                ElementsAre("The service leaves this visitor alone", "Cannot register click listener"));
    EXPECT_THAT(screen->subviews, SizeIs(1));
}

TEST_F(CoBrowsingTest, AWidgetThatCannotBeShownStartsNoSession) {
    const auto failWith = [this](const std::string& reason) {
        start();
        expectError("[ERROR] CoBrowsing: Starting UI failed with error: " + reason);
        expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: " + reason);
    };
    const auto root = std::exchange(platform->app.root, nullptr);
    failWith("Cannot find view of controller");
    platform->app.root = root;
    platform->widgets().className = "";
    failWith("Widget cannot be created");
    EXPECT_TRUE(log.contains("[WARNING] DefaultUIView: Cannot load ui view"));
    platform->widgets().className = "Other";
    failWith("Widget cannot be created");
    EXPECT_TRUE(log.contains("[WARNING] DefaultUIView: Cannot get DefaultUIView from nib"));
    EXPECT_THAT(service.requests("POST", "api/in/im/c"), IsEmpty());
    EXPECT_THAT(screen->subviews, IsEmpty());
}

TEST_F(CoBrowsingTest, AStopOnTheWayWinsAndTheWidgetGoesWithTheSession) {
    Merovanta::coBrowsing().start();
    expectError(
        "[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: CoBrowsing was stopped while it started");
    Merovanta::coBrowsing().stop();
    advance(1s);
    EXPECT_EQ(platform->widgets().made, 0);
    EXPECT_TRUE(log.contains("[WARNING] Panoptra: Already stopped"));

    start();
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(widget(), nullptr);
    EXPECT_EQ(timers(), 0);
    start();
    EXPECT_THAT(outcomes, ElementsAre("started", "started"));
}

TEST_F(CoBrowsingTest, NothingStartsAfterAStopThatCameWhileTheTextsWereLoaded) {
    Merovanta::coBrowsing().startWith([this] { outcomes.emplace_back("started"); },
                                      [this](const std::string& error) { outcomes.push_back(error); });
    expectError(
        "[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: CoBrowsing was stopped while it started");
    Merovanta::user().clear();
    advance(5s);
    EXPECT_THAT(service.requests("POST", "api/in/im/c"), IsEmpty());
    EXPECT_EQ(text(), "(no widget)");
    EXPECT_THAT(outcomes, ElementsAre("CoBrowsing was stopped while it started"));
}

TEST_F(CoBrowsingTest, TheWidgetClosesEvenWithoutItsController) {
    const auto lone = DefaultUIView::create(*platform->app.keyWindowRootViewController()->view());
    ASSERT_NE(lone, nullptr);
    const auto actions = widget()->actions;
    Injection::discard();
    platform::install(nullptr);
    actions.closeClicked();
    EXPECT_THAT(screen->subviews, IsEmpty());
    platform::install(platform);
}

TEST_F(CoBrowsingTest, TheWidgetFollowsTheWindowInFrontAndWithoutItNothingIsShared) {
    service.initReply["cA"] = true;
    start();
    const std::string code = text();
    widget()->actions.hideClicked();
    const auto hidden = widget()->hidden;
    const auto show = [this](std::uint32_t color) {
        const auto other = NativeView::make(screen->frame, color, {"OtherScreen"});
        platform->app.root = inmemory::NativeController::make("OtherPage", other);
        platform->app.paint();
        return other;
    };
    auto other = show(0xFF112233);
    advance(1s);
    ASSERT_THAT(other->subviews, SizeIs(1));
    EXPECT_EQ(other->subviews[0]->classNames.front(), "DefaultUIView");
    EXPECT_THAT(screen->subviews, IsEmpty());
    EXPECT_EQ(text(), code);
    EXPECT_EQ(widget()->hidden, hidden);

    platform->app.root.reset();
    other.reset();
    advance(1s);
    const auto sent = service.screenshots().size();
    platform->widgets().className = "";
    other = show(0xFF445566);
    advance(2s);
    EXPECT_EQ(service.screenshots().size(), sent) << "shared without a widget";
    platform->widgets().className = "DefaultUIView";
    advance(1s);
    EXPECT_EQ(service.screenshots().size(), sent + 1);
    EXPECT_EQ(text(), code);
    Merovanta::coBrowsing().stop();
    advance(1s);
    EXPECT_THAT(other->subviews, IsEmpty());
}

TEST_F(CoBrowsingTest, AWidgetOfAFailedStartNeverWaitsForARestart) {
    startSession();
    start();
    expectError("[ERROR] CoBrowsing: Starting Panoptra failed: Panoptra is already started");
    expectError("[ERROR] MerovantaCoBrowsing: Starting CoBrowsing failed: Panoptra is already started");
    Merovanta::user().tag({.id = "4711"});
    advance(1s);
    EXPECT_EQ(text(), "Sorry");
}

TEST_F(CoBrowsingTest, TheWidgetSaysWhatBecomesOfTheSession) {
    start();
    const auto well = service.override;
    const auto beCutOff = [this] {
        service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("lost"); };
        advance(2s);
    };
    beCutOff();
    expectError("[ERROR] XhrMessageSender: Request failed");
    EXPECT_EQ(text(), "One moment");
    service.override = well;
    advance(3s);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    platform->app.resignActive();
    advance(6s);
    platform->app.becomeActive();
    advance(0s);
    EXPECT_EQ(text(), "One moment");
    advance(1s);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    platform->app.becomeActive();  // it is opened anew all the same
    beCutOff();
    expectError("[ERROR] Panoptra: Cannot restart session after close: lost");
    EXPECT_EQ(text(), "Sorry");
    Merovanta::coBrowsing().stop();
    advance(1s);
    EXPECT_EQ(widget(), nullptr);
}

TEST_F(CoBrowsingTest, ANewVisitorRestartsTheSessionUnderTheSameWidget) {
    start();
    const std::string code = text();
    const auto before = widget();
    config().panoptraConfig->optIn = true;
    bool isTagged = false;
    Injection::resolve<User>()->tag(ActiveUser{.id = "a/b"}, [&](bool) { isTagged = true; });
    advance(1s);
    EXPECT_TRUE(isTagged);
    EXPECT_EQ(service.requests("POST", "rest/v1/customerstatus/tag/byVisitor/a%2Fb").size(), 1);
    EXPECT_EQ(widget(), before);
    EXPECT_NE(text(), code);
    EXPECT_EQ(text(), Merovanta::panoptra().shareId());
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    EXPECT_EQ(config().visitConfig->visitorId, "a/b");
    EXPECT_EQ(timers(), 4);
}

}  // namespace
}  // namespace merovanta::testing
