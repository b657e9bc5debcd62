#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"
#include "General/Panoptra/Network/PageProperties.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class TransportTest : public LibraryTest {
 protected:
    void connect() {
        sender->connect("Page", {}, {});
        advance(20ms);
    }

    /// Answers the POSTs of the stream with this body, then lets one be made.
    void answerWith(const std::string& body) {
        service.override = [body](const HttpRequest& request) -> std::optional<HttpReply> {
            if (request.method != "POST") return std::nullopt;
            return HttpSessionInMemory::reply(200, body);
        };
        sender->sendTag("t", 0);
        advance(200ms);
    }

    std::shared_ptr<XhrMessageSender> sender = Injection::resolve<XhrMessageSender>();
};

TEST_F(TransportTest, TimesAreWholeSecondsLessTheOffset) {
    connect();
    platform->clock().start = 1'700'000'000'999ms - 20ms;
    sender->sendPing(0);
    sender->sendPing(250);
    advance(1s);
    const auto messages = service.messages();
    ASSERT_THAT(messages, SizeIs(2));
    EXPECT_EQ(messages[0].time(), 1'700'000'000'000);
    EXPECT_EQ(messages[1].time(), 1'699'999'999'750);
    EXPECT_DEATH(sender->sendPing(std::int64_t{1} << 62), "The time of a message overflows");
    platform->clock().start = std::chrono::milliseconds::max() - 1h;
    EXPECT_DEATH(sender->sendPing(-1'000'000'000), "The time of a message overflows");
}

TEST_F(TransportTest, MessagesOfOnePauseGoTogetherAndThoseInBetweenGoNext) {
    connect();
    advance(10s);
    EXPECT_THAT(service.requests("POST", "api/ix/m"), IsEmpty()) << "an empty queue makes none";
    EXPECT_EQ(timers(), 1);
    bool isSent = false;
    sender->sendTag("a", 0, [&](const auto& error) { isSent = !error; });
    EXPECT_FALSE(isSent) << "never inside the call";
    sender->sendTag("b", 0);
    advance(0s);
    EXPECT_TRUE(isSent);
    advance(100ms);  // the POST is on its way
    sender->sendScreenshot("outdated", 0, [](const auto& error) { EXPECT_FALSE(error); });
    sender->sendTag("between", 0);
    sender->sendScreenshot("newest", 0, {});
    sender->sendClick(1, 2, 0, {});
    sender->send(ProtoMessage(), [](const auto&) {});  // but not what is sent past the outbox
    advance(20ms);
    sender->sendTag("c", 0);
    advance(1s);
    const auto messages = service.messages();
    ASSERT_THAT(messages, SizeIs(6));
    EXPECT_THAT(service.tags(), ElementsAre("a", "b", "between", "c"));
    EXPECT_EQ(messages[3].screenshotevent(0).image(), "newest") << "behind what came before it";
    EXPECT_EQ(messages[4].clickevent(0).y(), 2);
    EXPECT_THAT(service.requests("POST", "api/ix/m"), SizeIs(2));
}

TEST_F(TransportTest, WhatWaitsIsBoundedAndTheLeastOfItGoesFirst) {
    connect();
    platform->httpSession().latency = 10s;
    sender->sendTag("under way", 0);
    advance(100ms);
    std::vector<std::string> refused;
    const auto note = [&](const char* what) {
        return [&refused, what](const auto& error) {
            if (error) refused.push_back(what + (": " + error->errorDescription()));
        };
    };
    sender->sendPing(0, note("ping"));
    sender->sendClick(1, 1, 0, note("first tap"));
    sender->sendClick(2, 2, 0, note("second tap"));
    sender->sendTag("first", 0, note("first tag"));
    for (int i = 4; i < 10'000; ++i)
        sender->sendTag("more", 0, note("tag"));
    sender->sendScreenshot("picture", 0, note("picture"));
    advance(0s);
    EXPECT_THAT(refused, IsEmpty());
    for (int i = 0; i < 4; ++i)
        sender->sendTag("last", 0, note("last tag"));
    advance(0s);
    EXPECT_THAT(refused,
                ElementsAre("ping: Too many messages wait", "first tap: Too many messages wait",
                            "second tap: Too many messages wait", "first tag: Too many messages wait"));
    platform->httpSession().latency = 20ms;
    advance(20s);
    EXPECT_THAT(service.tags(), SizeIs(10'001));
    EXPECT_THAT(service.screenshots(), ElementsAre("picture"));
}

TEST_F(TransportTest, WhatStillWaitsAtTheCloseIsRefused) {
    connect();
    sender->sendTag("under way", 0);
    advance(100ms);
    std::string outcome;
    sender->sendTag("waits", 0, [&](const auto& error) { outcome = error ? error->mMsg : "sent"; });
    advance(0s);
    sender->close();
    EXPECT_EQ(outcome, "Sender is closed");
    advance(1s);
    EXPECT_THAT(service.tags(), ElementsAre("under way"));
    EXPECT_EQ(timers(), 0);
}

TEST_F(TransportTest, AStreamKeepsTheIdsThatOpenedIt) {
    config().visitConfig->update("V", "visitor", "S");
    connect();
    sender->sendTag("a", 0);
    config().visitConfig->update("other", "other", "other");
    advance(1s);
    sender->close();
    for (const auto& request : platform->httpSession().requests) {
        EXPECT_EQ(FakeService::header(request, "X-QD-SSID"), "S") << request.method;
        EXPECT_NE(request.url.find("id=V&"), std::string::npos) << request.url;
        EXPECT_EQ(request.url.find("other"), std::string::npos) << request.url;
    }
}

TEST_F(TransportTest, FasterPollingTakesEffectAtTheNextRound) {
    connect();
    service.agentMessages = {{{"co", {{"b", false}}}}};
    sender->sendTag("a", 0);
    advance(119ms);
    EXPECT_EQ(config().panoptraConfig->increasedPollingFrequency, std::nullopt);
    advance(1ms);
    EXPECT_EQ(config().panoptraConfig->increasedPollingFrequency, true);
    advance(100ms);
    sender->sendTag("b", 0);
    advance(31ms);
    EXPECT_THAT(service.tags(), ElementsAre("a", "b"));
}

TEST_F(TransportTest, AFailedRequestEndsTheLoopForGood) {
    expectError("[ERROR] XhrMessageSender: Request failed");
    connect();
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("Connection lost"); };
    sender->sendTag("kept", 0);
    advance(1s);
    service.override = {};
    sender->sendTag("queued", 0);
    advance(60s);
    EXPECT_THAT(service.requests("POST", "api/ix/m"), SizeIs(1));
    EXPECT_EQ(timers(), 0);

    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("No route to host"); };
    connect();
    advance(10s);
    EXPECT_EQ(timers(), 0) << "nor does a GET that fails start one";
    expectError("[ERROR] XhrMessageSender: Request failed");

    // A status is no failure.
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::reply(500, "<html>"); };
    connect();
    advance(1s);
    EXPECT_TRUE(log.contains("[WARNING] XhrMessageSender: Cannot parse message"));
    service.override = {};
    sender->sendTag("last", 0);
    advance(1s);
    EXPECT_THAT(service.tags(), ElementsAre("kept", "kept", "queued", "last"));
}

TEST_F(TransportTest, RepliesOfEveryKindAreReadPartByPart) {
    connect();
    const auto handled = [this] {
        return log.lines("[DEBUG] BidirectionalMessageHandler: Handle message: ");
    };
    const auto warnings = [this] { return log.lines("[WARNING] XhrMessageSender: Cannot parse message"); };
    answerWith("");
    answerWith("[]");
    answerWith(R"([1, null, {"a":"c"}, ["x"], "{}", "[1,\"x\",[{\"x\":1}]]", "7"])");
    EXPECT_THAT(handled(), IsEmpty());
    EXPECT_THAT(warnings(), IsEmpty());

    answerWith(R"(["[{\"x\":10},{\"x\":-1.9,\"y\":2,\"co\":{\"opt\":\"yes\"},\"a\":\"x\"}]"])");
    EXPECT_THAT(handled(),
                ElementsAre("[DEBUG] BidirectionalMessageHandler: Handle message: BidirectionalMessage()",
                            "[DEBUG] BidirectionalMessageHandler: Handle message: "
                            "BidirectionalMessage(stop: false, click: -1, 2)"));
    answerWith(R"(["[{\"x\":1e300,\"y\":1}]", "not json", "[{}]"])");
    EXPECT_THAT(handled(), SizeIs(3));
    EXPECT_THAT(warnings(), SizeIs(1));
    answerWith("{}");
    answerWith(R"(["[)");
    EXPECT_THAT(warnings(), SizeIs(3));
    answerWith(std::string(1'000'000, '['));
    EXPECT_THAT(warnings(), SizeIs(4));
    std::string flood = "[{}";
    for (int i = 1; i <= 1000; ++i)
        flood += ",{}";
    answerWith("[\"" + flood + "]\"]");
    EXPECT_THAT(handled(), SizeIs(1003));
    EXPECT_THAT(warnings(), SizeIs(5));
    EXPECT_EQ(timers(), 1);
}

TEST_F(TransportTest, CloseLetsOneMoreRoundRunAndAnEarlyReconnectMakesNoSecondLoop) {
    connect();
    sender->sendTag("last", 0);
    sender->close();
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
    advance(10s);
    EXPECT_THAT(service.tags(), ElementsAre("last"));
    EXPECT_EQ(timers(), 0);

    connect();
    sender->close();
    platform->httpSession().latency = 500ms;
    connect();
    platform->httpSession().latency = 20ms;
    connect();
    platform->httpSession().latency = 2s;
    sender->sendTag("once", 0);
    advance(1s);  // the first GET is answered while the POST is under way
    EXPECT_THAT(service.tags(), ElementsAre("last", "once"));
    platform->httpSession().latency = 20ms;
    advance(10s);
    EXPECT_EQ(timers(), 1);
    sender->close();
    advance(1s);
    EXPECT_EQ(timers(), 0);
}

TEST_F(TransportTest, ADeleteCarriesTheVisitAndItsFailureIsOnlyLogged) {
    config().tenantId = "a b&c";
    sender->close();
    const VisitConfig visit = *config().visitConfig;
    EXPECT_EQ(service.requests("DELETE", "api/ix/m").front().url,
              "https://service.example/api/ix/m?fsTy=&id=" + *visit.visitId + "&sId=" + *visit.sessionId +
                  "&tId=a%20b%26c&url=&vId=" + *visit.visitorId);
    EXPECT_THAT(log.lines("[DEBUG] HttpUtil: DELETE https://service.example/api/ix/m?"), SizeIs(1));
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("gone"); };
    sender->close();
    advance(1s);
    EXPECT_TRUE(log.contains("[WARNING] MessageSender: Failed to send delete: gone"));
}

TEST_F(TransportTest, AFirstLaunchSendsEmptyTextsInPlaceOfNull) {
    config().visitConfig.emplace();
    config().panoptraConfig.reset();
    config().tenantId.reset();
    bool isDone = false;
    Injection::resolve<InitSender>()->sendInit("", true, [&](const auto& reply) { isDone = reply.ok(); });
    advance(1s);
    EXPECT_TRUE(isDone);
    const HttpRequest request = service.requests("POST", "api/in/im/c").front();
    EXPECT_EQ(request.body,
              R"({"shId":"","qdu":"","url":"","start":0,"init":true,"page":{"width":390,"height":844,)"
              R"("docHeight":0,"docWidth":0},"vId":"","sId":"","viId":"","tId":"","optin":false})");
    EXPECT_EQ(FakeService::header(request, "X-QD-SSID"), "");
}

TEST_F(TransportTest, WhatCannotBeAnAddressIsRefusedOrFatalButNeverSent) {
    Merovanta::configuration().setServer("host:port:1");
    std::string error;
    Injection::resolve<InitSender>()->sendInit("", true,
                                               [&](const auto& reply) { error = reply.error().mMsg; });
    EXPECT_EQ(error, "Cannot construct URL");
    const HttpUtil http(Injection::resolve<ApplicationConfigWrapper>());
    EXPECT_DEATH((void)http.buildRequest("https://[::1/x"), "Not a URL: https://\\[::1/x");
    EXPECT_DEATH((void)http.buildRequest(""), "Not a URL: ");
    EXPECT_EQ(http.buildRequest("https:///api").url, "https:///api");
    EXPECT_EQ(http.buildRequest("https://[::1]:8/%41%4?a b#\xC3\xA4").url,
              "https://[::1]:8/%41%254?a%20b#%C3%A4");
    EXPECT_DEATH((void)PageProperties::of({0, 0, 1e19, 1}), "The screen's bounds are no 64-bit number");
    EXPECT_DEATH((void)PageProperties::of({0, 0, 1, std::nan("")}),
                 "The screen's bounds are no 64-bit number");
}

TEST(WireMessagesTest, EveryFieldHasItsNumberAndPresenceDecidesWhatIsWritten) {
    ProtoMessageList list;
    EXPECT_EQ(list.SerializeAsString(), "");
    ProtoMessage* const message = list.add_messages();
    message->set_time(300);
    message->set_pagechange("p");
    message->add_screenshotevent()->set_image("");
    message->add_clickevent()->set_x(0);
    message->mutable_clickevent(0)->set_y(1);
    message->set_tag("t");
    UserTag* const user = message->add_usertag();
    user->set_id("1");
    user->set_email("2");
    user->set_firstname("3");
    user->set_lastname("4");
    user->add_label("5");
    user->set_assigneduser("6");
    user->set_mobiledevicetoken("7");
    const std::string bytes(
        "\x0A\x30"
        "\x08\xAC\x02"
        "\x12\x01p"
        "\x1A\x02\x0A\x00"
        "\x22\x0A\x0D\x00\x00\x00\x00\x15\x00\x00\x80\x3F"
        "\x2A\x01t"
        "\x32\x15\x0A\x01"
        "1\x12\x01"
        "2\x1A\x01"
        "3\x22\x01"
        "4\x2A\x01"
        "5\x32\x01"
        "6\x3A\x01"
        "7",
        50);
    EXPECT_EQ(list.SerializeAsString(), bytes);
    EXPECT_EQ(Com_Merovanta_Panoptra_UserTag().GetTypeName(), "com.merovanta.panoptra.UserTag");
}

}  // namespace
}  // namespace merovanta::testing
