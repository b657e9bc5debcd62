#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using inmemory::NativeController;
using inmemory::NativeView;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SessionTest : public LibraryTest {
 protected:
    /// The requests so far, as method and path, or the type of an entry in the activity log; the polled
    /// stream's POSTs are left out.
    [[nodiscard]] std::vector<std::string> requestLines() const {
        std::vector<std::string> lines;
        for (const auto& request : platform->httpSession().requests) {
            const std::string line = request.method + " " + FakeService::path(request);
            if (line == "POST api/in/io/l") {
                lines.push_back("log " + nlohmann::json::parse(request.body)["t"].get<std::string>());
            } else if (line != "POST api/ix/m") {
                lines.push_back(line);
            }
        }
        return lines;
    }
};

TEST_F(SessionTest, TellsTheServiceWhoAndWhereBeforeAnythingElse) {
    platform->app.screen.bounds = {0, 0, 390.9, 844.2};
    startSession();
    EXPECT_THAT(requestLines(), ElementsAre("log ca", "POST api/in/im/c", "GET api/ix/m", "log cs"));
    const HttpRequest init = platform->httpSession().requests[1];
    const VisitConfig visit = *config().visitConfig;
    EXPECT_EQ(init.url, "https://service.example/api/in/im/c");
    EXPECT_EQ(init.body, R"({"shId":")" + Merovanta::panoptra().shareId() +
                             R"(","qdu":"","url":"HomePage","start":1700000000000,"init":false,)"
                             R"("page":{"width":390,"height":844,"docHeight":0,"docWidth":0},"vId":")" +
                             *visit.visitorId + R"(","sId":")" + *visit.sessionId + R"(","viId":")" +
                             *visit.visitId + R"(","tId":"tenant","optin":false})");
    for (const auto& request : platform->httpSession().requests) {
        EXPECT_EQ(FakeService::header(request, "X-QD-SSID"), *visit.sessionId);
        if (request.method == "POST") {
            EXPECT_EQ(FakeService::header(request, "Content-Type"), "application/json");
        }
    }
    EXPECT_THAT(
        log.lines("[DEBUG] Panoptra: "),
        ElementsAre("[DEBUG] Panoptra: Start", "[DEBUG] Panoptra: Get init",
                    "[DEBUG] Panoptra: Selected message sender: XhrMessageSender",
                    "[DEBUG] Panoptra: Should start monitoring: true",
                    "[DEBUG] Panoptra: Should start or force is set", "[DEBUG] Panoptra: Start monitor"));
}

TEST_F(SessionTest, SaysOnceThatThereAreNoPicturesAndAsksForThemEverMoreRarely) {
    const std::string none = "[WARNING] PictureGap: No picture could be taken for more than 3 seconds";
    const std::string again = "[WARNING] PictureGap: Pictures are taken again";
    startSession();
    auto& capture = platform->screenCapture();
    const auto gap = [&](std::chrono::milliseconds length) {
        capture.isFailing = true;
        capture.captures = 0;
        platform->app.paint();
        advance(length);
        capture.isFailing = false;
        return capture.captures;
    };
    EXPECT_GE(gap(2s), 3) << "soon, at first";
    advance(4s);
    EXPECT_THAT(log.lines("[WARNING]"), IsEmpty());

    gap(3700ms);
    EXPECT_THAT(log.lines("[WARNING]"), ElementsAre(none)) << "whenever the next try is due";
    EXPECT_LE(gap(60s), 25);
    EXPECT_THAT(log.lines("[WARNING]"), ElementsAre(none));
    const auto sent = service.screenshots().size();
    paint(0xFF00FF00);
    advance(4s);
    EXPECT_THAT(service.screenshots(), SizeIs(sent + 1));
    EXPECT_THAT(log.lines("[WARNING]"), ElementsAre(none, again));

    gap(10s);
    Merovanta::panoptra().stop();
    startSession();
    EXPECT_THAT(log.lines("[WARNING]"), ElementsAre(none, again, none)) << "another session, another start";
}

TEST_F(SessionTest, AnUnchangedScreenIsSentOnceAndCostsNothingButAPingASecond) {
    startSession();
    const auto before = service.messages().size();
    advance(60s);
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    EXPECT_EQ(platform->screenCapture().captures, 1);
    const auto messages = service.messages();
    EXPECT_EQ(messages.size() - before, 60);
    EXPECT_EQ(messages.back().SerializeAsString()[0], 0x08);
    EXPECT_EQ(messages.back().time() % 1000, 0);

    // Painted again without a change: looked at, not sent.
    platform->app.paint();
    advance(1s);
    EXPECT_EQ(platform->screenCapture().captures, 2);
    EXPECT_THAT(service.screenshots(), SizeIs(1));

    paint(0xFF0000FF);
    advance(1s);
    EXPECT_THAT(service.screenshots(), SizeIs(2));
}

TEST_F(SessionTest, ATransportKeepsToTenRequestsASecond) {
    startSession();
    const auto before = service.requests("POST", "api/ix/m").size();
    for (int i = 0; i < 1000; ++i) {
        Merovanta::panoptra().tag("busy");
        advance(10ms);
    }
    const auto posts = service.requests("POST", "api/ix/m").size() - before;
    EXPECT_LE(posts, 100);
    EXPECT_GE(posts, 80);
}

TEST_F(SessionTest, ReportsAPageWhenAnotherComesToTheFront) {
    startSession();
    advance(2s);
    EXPECT_THAT(service.pageChanges(), IsEmpty());
    const auto home = platform->app.root;
    const auto stack = NativeController::make("Stack", screen);
    stack->entries = {NativeController::make("LoginPage", screen),
                      NativeController::make("HelpPage", screen)};
    platform->app.root = stack;
    advance(2s);
    EXPECT_THAT(service.pageChanges(), ElementsAre("LoginPage"));

    const auto tabs = NativeController::make("Tabs", screen);
    tabs->selected = NativeController::make("CardsPage", screen);
    stack->entries = {tabs};
    advance(2s);
    home->presented = NativeController::make("Dialog", screen);
    platform->app.root = home;
    advance(2s);
    home->presented.reset();
    advance(2s);
    EXPECT_THAT(service.pageChanges(), ElementsAre("LoginPage", "CardsPage", "Dialog", "HomePage"));
    EXPECT_TRUE(log.contains("[DEBUG] ViewMonitor: View changed to: CardsPage"));
}

TEST_F(SessionTest, SendsATapInDevicePixels) {
    platform->app.screen.scale = 3;
    startSession();
    platform->tapRecognizers().tap({10.5, 20.25});
    platform->tapRecognizers().tap({1, 1}, TapRecognizer::State::failed);
    advance(1s);
    const auto taps = service.taps();
    ASSERT_THAT(taps, SizeIs(1));
    EXPECT_EQ(taps[0].x(), 31);
    EXPECT_EQ(taps[0].y(), 60);
    EXPECT_TRUE(log.contains("[DEBUG] ViewMonitor: Got click at 10.5, 20.25"));
}

TEST_F(SessionTest, TagsTheVisitAndNamesTheVisitor) {
    expectError("[ERROR] MerovantaPanoptra: Cannot tag session: Cannot tag session without message sender");
    Merovanta::panoptra().tag("too early");
    ActiveUser user;
    user.id = "4711";
    user.tags = {"gold", "new"};
    user.assignedUser = "";
    config().activeUserTag = user;
    startSession();
    Merovanta::panoptra().tag("checkout");
    advance(1s);
    UserTag userTag;
    for (const auto& message : service.messages())
        if (message.usertag_size() == 1) userTag = message.usertag(0);
    EXPECT_THAT(service.tags(), ElementsAre("checkout"));
    EXPECT_EQ(userTag.SerializeAsString(), std::string("\x0A\x04"
                                                       "4711"
                                                       "\x2A\x04gold\x2A\x03new\x32\x00",
                                                       19));
    EXPECT_EQ(config().visitConfig->visitorId, "4711");
}

TEST_F(SessionTest, StopEndsEveryTimerAndTellsTheService) {
    startSession();
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_THAT(requestLines(), ElementsAre("log ca", "POST api/in/im/c", "GET api/ix/m", "log cs",
                                            "DELETE api/ix/m", "log ce"));
    EXPECT_TRUE(log.contains("[DEBUG] MessageSender: Delete sent"));
    EXPECT_EQ(timers(), 0);
    EXPECT_EQ(platform->tapRecognizers().attached(), 0);
    const auto sent = platform->httpSession().requests.size();
    paint(0xFF00FF00);
    advance(60s);
    EXPECT_EQ(platform->httpSession().requests.size(), sent);
    Merovanta::panoptra().stop();
    EXPECT_TRUE(log.contains("[WARNING] Panoptra: Already stopped"));
}

TEST_F(SessionTest, ASecondStartIsRefusedAndALaterOneIsNew) {
    expectError("[ERROR] MerovantaPanoptra: Error when starting Panoptra: Panoptra is already started");
    startSession();
    const std::string code = Merovanta::panoptra().shareId();
    const VisitConfig visit = *config().visitConfig;
    Merovanta::panoptra().start();
    EXPECT_EQ(Merovanta::panoptra().shareId(), code);
    config().panoptraConfig->optIn = true;
    Merovanta::panoptra().stop();
    Merovanta::panoptra().start("other", "secret");
    advance(3s);
    EXPECT_NE(Merovanta::panoptra().shareId(), code);
    EXPECT_NE(config().visitConfig->sessionId, visit.sessionId);
    EXPECT_EQ(config().tenantId, "other");
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    // The new session begins with a whole picture although the screen is the same.
    EXPECT_THAT(service.screenshots(), SizeIs(2));
    // One loop, one ping, one monitor: no timer of the first session is left.
    EXPECT_EQ(timers(), 4);
}

TEST_F(SessionTest, TheReplyDecidesWhetherTheScreenIsWatched) {
    service.initReply["s"] = false;
    startSession();
    advance(5s);
    EXPECT_THAT(service.screenshots(), IsEmpty());
    EXPECT_FALSE(service.messages().empty());
    EXPECT_EQ(config().panoptraConfig->storageType, "l");
    Merovanta::panoptra().stop();

    service.initReply.update({{"st", "u"}, {"fsTy", "m"}, {"cA", true}});
    startSession();
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    EXPECT_EQ(config().panoptraConfig->storageType, "m");
    EXPECT_EQ(config().chatAvailable, true);
}

TEST_F(SessionTest, AnIgnoredVisitorAndAReplyWithoutBodyLeaveNothing) {
    service.initReply["x"] = true;
    startSession();
    EXPECT_TRUE(log.contains("[DEBUG] Panoptra: Ignoring"));
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::reply(200); };
    startSession();
    EXPECT_TRUE(log.contains("[WARNING] Panoptra: Config is nil"));
    advance(5s);
    EXPECT_THAT(requestLines(), ElementsAre("log ca", "POST api/in/im/c", "log ca", "POST api/in/im/c"));
    EXPECT_EQ(timers(), 0);
    service.override = {};
    service.initReply["x"] = false;
    startSession();
    EXPECT_THAT(service.screenshots(), SizeIs(1));
}

TEST_F(SessionTest, AReplyThatCannotBeUsedFailsTheStartWhichMayBeTriedAgain) {
    const auto with = [this](const char* path, const nlohmann::json& value) {
        const nlohmann::json change{
            {"op", value.is_null() ? "remove" : "add"}, {"path", path}, {"value", value}};
        return HttpSessionInMemory::reply(200,
                                          service.initReply.patch(nlohmann::json::array({change})).dump());
    };
    const std::vector<std::pair<HttpReply, std::string>> cases{
        {with("/ip", nullptr), R"(Cannot decode reply: "ip" is missing)"},
        {with("/ios/blacklist", nullptr), R"(Cannot decode reply: "blacklist" is missing)"},
        {with("/s", "true"), R"(Cannot decode reply: "s" has the wrong type or is too long)"},
        {with("/ios/blacklistClasses", {"A", 1}),
         R"(Cannot decode reply: "blacklistClasses" has the wrong type or is too long)"},
        {HttpSessionInMemory::reply(200, R"({"s":true,)"), "Cannot decode reply: it is not JSON"},
        {HttpSessionInMemory::reply(200, std::string(100000, '[')), "Cannot decode reply: it is not JSON"},
        {HttpSessionInMemory::reply(200, "[]"), "Cannot decode reply: it is not an object"},
        {HttpSessionInMemory::reply(500, service.initReply.dump()), "HTTP status 500"},
        {HttpSessionInMemory::failure("No route to host"), "No route to host"}};
    for (const auto& [reply, text] : cases) {
        service.override = [&reply](const HttpRequest&) { return reply; };
        expectError("[ERROR] MerovantaPanoptra: Error when starting Panoptra: " + text);
        Merovanta::panoptra().start();
        advance(1s);
    }
    EXPECT_EQ(service.requests("POST", "api/in/im/c").size(), cases.size());

    // A text that is no UTF-8 does not even go out.
    platform->app.root->className = "\xFF";
    Merovanta::panoptra().start();
    advance(1s);
    EXPECT_EQ(service.requests("POST", "api/in/im/c").size(), cases.size());
    const auto errors =
        log.lines("[ERROR] MerovantaPanoptra: Error when starting Panoptra: Cannot encode JSON: ");
    ASSERT_THAT(errors, SizeIs(1));
    expectError(errors[0]);

    platform->app.root->className = "HomePage";
    service.override = {};
    startSession();
    EXPECT_THAT(service.screenshots(), SizeIs(1));
}

TEST_F(SessionTest, AStartNeedsAScreenAndARecogniser) {
    expectError(
        "[ERROR] MerovantaPanoptra: Error when starting Panoptra: Cannot get current controller name");
    expectError("[ERROR] MerovantaPanoptra: Error when starting Panoptra: Cannot register click listener");
    const auto root = std::exchange(platform->app.root, nullptr);
    Merovanta::panoptra().start();
    advance(1s);
    EXPECT_THAT(requestLines(), ElementsAre("log ca"));
    platform->app.root = root;
    platform->tapRecognizers().isBroken = true;
    Merovanta::panoptra().start();
    advance(1s);
    // Nothing of it is left, and the service knows.
    EXPECT_THAT(requestLines(),
                ElementsAre("log ca", "log ca", "POST api/in/im/c", "GET api/ix/m", "DELETE api/ix/m"));
    EXPECT_THAT(service.messages(), IsEmpty());
    EXPECT_EQ(timers(), 0);
    platform->tapRecognizers().isBroken = false;
    startSession();
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
}

TEST_F(SessionTest, AWindowThatGoesAwayIsSurvived) {
    startSession();
    platform->app.root = nullptr;
    platform->tapRecognizers().tap({1, 1});
    advance(1s);
    EXPECT_FALSE(log.lines("[WARNING] ViewMonitor: Root view is null").empty());
    platform->app.root = NativeController::make("HomePage", screen);
    paint(0xFF00FF00);
    advance(1s);
    EXPECT_THAT(service.screenshots(), SizeIs(2));
}

TEST_F(SessionTest, NamesWithSpacesAndLettersFromEverywhereAreSentEncoded) {
    platform->app.root->className =
        "Mein Konto / \xC3\x9C"
        "bersicht [1]";
    CustomConfiguration custom("te nant", "token");
    custom.setServerUrl("m\xC3\xBCnchen service.example");
    Merovanta::initConfig(custom);
    startSession();
    EXPECT_EQ(service.requests("GET", "api/ix/m").size(), 1);
    const std::string url = service.requests("GET", "api/ix/m").front().url;
    EXPECT_TRUE(url.starts_with("https://m%C3%BCnchen%20service.example/api/ix/m?id="));
    EXPECT_TRUE(
        url.ends_with("&url=Mein%20Konto%20/%20%C3%9C"
                      "bersicht%20%5B1%5D&fsTy=l"))
        << url;
    EXPECT_NE(url.find("&tId=te%20nant&"), std::string::npos);
}

}  // namespace
}  // namespace merovanta::testing
