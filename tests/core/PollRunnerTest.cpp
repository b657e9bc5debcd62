#include <gmock/gmock.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Communication/Communication.h"
#include "General/Panoptra/Injection.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class PollRunnerTest : public LibraryTest {
 protected:
    /// Lets the pause go by that began with the configuration.
    PollRunnerTest() { advance(3s); }

    void answerWith(const HttpReply& reply) {
        service.override = [reply](const HttpRequest&) { return reply; };
    }

    [[nodiscard]] std::vector<HttpRequest> polls() const { return service.requests("POST", "api/in/co"); }

    void registerClient(RegisteredClient client) {
        client.callback = [this, id = client.id](const std::string& payload) {
            heard.push_back(id + ":" + payload);
        };
        communication->registerClient(std::move(client));
    }

    void registerAgentChannel() {
        registerClient({.id = "SCB", .channel = CommunicationChannel::SCB, .rate = 3});
    }

    std::shared_ptr<Communication> communication = Injection::resolve<Communication>();
    std::vector<std::string> heard;
};

TEST_F(PollRunnerTest, OnePollCarriesAllClientsAndItsReplyReachesThem) {
    registerAgentChannel();
    registerClient({.id = "STATUS",
                    .channel = CommunicationChannel::S,
                    .rate = 5,
                    .payload = "{}",
                    .additionalParams = "a=1"});
    registerClient({.id = "also", .channel = CommunicationChannel::S, .rate = 4, .additionalParams = "b=2"});
    answerWith(HttpSessionInMemory::reply(
        200, R"([{"c":"S","p":"hello"},{"c":"??","p":""},7,{"c":"SCB","p":"{}"},{"c":"JS","p":""}])"));
    advance(3s);
    ASSERT_THAT(polls(), SizeIs(1));
    EXPECT_EQ(polls()[0].body, R"({"c":["SCB","S"],"m":[{"c":"S","p":"{}"}],"ad":"a=1&b=2"})");
    EXPECT_TRUE(polls()[0].url.starts_with("https://service.example/api/in/co?cId=&sId="));
    advance(20ms);
    EXPECT_THAT(heard, ElementsAre("STATUS:hello", "also:hello", "SCB:{}"));

    for (const std::string& body :
         std::vector<std::string>{"", "{}", "[[[[", "null", std::string(1 << 22, '[')}) {
        answerWith(HttpSessionInMemory::reply(200, body));
        advance(3020ms);
    }
    EXPECT_THAT(heard, SizeIs(3));
    EXPECT_THAT(log.lines("[WARNING] XhrRunner: Cannot parse poll reply"), SizeIs(4));
    EXPECT_EQ(timers(), 0);
}

TEST_F(PollRunnerTest, AMessageCountsWhateverItsPayloadAndWhereverItsListStands) {
    registerAgentChannel();
    const auto poll = [this](const std::string& body) {
        heard.clear();
        answerWith(HttpSessionInMemory::reply(200, body));
        advance(3020ms);
        return heard;
    };
    const std::string longText(5000, 'x');
    EXPECT_THAT(poll(R"({"c":["SCB"],"m":[{"c":"SCB","p":"wrapped"}]})"), ElementsAre("SCB:wrapped"));
    EXPECT_THAT(poll(R"([{"c":"SCB"},{"c":"SCB","p":{"id":7}},{"c":"SCB","p":null}])"),
                ElementsAre("SCB:", "SCB:", "SCB:"));
    EXPECT_THAT(poll(R"([{"c":"SCB","p":")" + longText + R"("}])"), ElementsAre("SCB:" + longText));
    EXPECT_THAT(poll(R"([{"c":"SCB","p":")" + std::string(2 << 20, 'x') + R"("}])"), ElementsAre("SCB:"));
    EXPECT_THAT(poll(R"({"m":{"c":"SCB","p":"no list"}})"), IsEmpty());
    EXPECT_THAT(log.lines("[WARNING] XhrRunner: Cannot parse poll reply"), SizeIs(1));
}

TEST_F(PollRunnerTest, PausesAtTheEleventhFailureInARowAndGoesOnWhenToldTo) {
    const auto paused = [this] { return log.lines("[WARNING] XhrRunner: Exceed max retries. Stop").size(); };
    const auto fail = [this](int times) {
        answerWith(HttpSessionInMemory::failure("lost"));
        advance(times * 3020ms);
        expectError("[ERROR] XhrRunner: Poll failed: lost", static_cast<std::size_t>(times));
    };
    registerAgentChannel();
    fail(10);
    answerWith(HttpSessionInMemory::reply(200));
    advance(3020ms);
    fail(10);
    EXPECT_EQ(paused(), 0);
    fail(1);
    EXPECT_EQ(paused(), 1);

    const auto sent = polls().size();
    advance(1h);
    EXPECT_THAT(polls(), SizeIs(sent));
    EXPECT_EQ(timers(), 1) << "that of the health check";
    answerWith(HttpSessionInMemory::reply(500));
    registerAgentChannel();
    advance(3s);
    EXPECT_THAT(polls(), SizeIs(sent + 1));
    registerAgentChannel();  // the poll under way goes on by itself
    advance(3020ms);
    EXPECT_THAT(polls(), SizeIs(sent + 2));
    EXPECT_EQ(timers(), 0);
}

TEST_F(PollRunnerTest, APauseEndsWhenTheServiceIsBackTheApplicationIsOrASessionConnects) {
    const auto pause = [this] {
        answerWith(HttpSessionInMemory::failure("lost"));
        advance(12 * 3020ms);
        expectError("[ERROR] XhrRunner: Poll failed: lost", 11);
    };
    const auto isPolling = [this] {
        const auto before = polls().size();
        advance(4s);
        return polls().size() > before;
    };
    const auto checks = [this] { return service.requests("GET", "api/ic/h").size(); };
    registerAgentChannel();
    pause();
    EXPECT_FALSE(isPolling());
    advance(1h);
    const auto before = checks();
    advance(1h);
    EXPECT_EQ(checks() - before, 60) << "asked once a minute by now";
    service.override = {};
    advance(1min);
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(timers(), 0);

    pause();
    advance(1h);
    service.override = {};
    platform->app.resignActive();
    platform->app.becomeActive();
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(timers(), 0);

    pause();
    advance(1h);
    service.override = {};
    startSession();
    EXPECT_TRUE(isPolling());
    Merovanta::panoptra().stop();

    // Nobody is left to poll for: the end of the pause starts nothing.
    pause();
    communication->release("SCB");
    service.override = {};
    advance(2min);
    EXPECT_FALSE(isPolling());
}

TEST_F(PollRunnerTest, AReplyWithoutResponseIsAFailureAfterASuccess) {
    registerAgentChannel();
    answerWith(HttpReply{});
    advance(20 * 3020ms);
    expectError("[ERROR] XhrRunner: Poll failed wil nil response", 20);
    EXPECT_THAT(log.lines("[WARNING] XhrRunner: "), IsEmpty());
}

TEST_F(PollRunnerTest, ThePaceIsThatOfTheFastestClient) {
    const auto pollsDuring = [this](std::chrono::nanoseconds duration) {
        const auto before = polls().size();
        advance(duration);
        return polls().size() - before;
    };
    config().activeUserTag = ActiveUser{.id = "4711"};
    communication->registerStatus();
    EXPECT_EQ(pollsDuring(4s), 1);
    registerAgentChannel();
    // A new pace is taken up when the pause that has begun is over.
    EXPECT_EQ(pollsDuring(2999500ms), 1);
    EXPECT_EQ(pollsDuring(302s), 100);
    communication->release("SCB");
    EXPECT_EQ(pollsDuring(3100s), 2);
    communication->release("nobody");
    EXPECT_EQ(pollsDuring(3001s), 1);
    communication->releaseStatus();
    EXPECT_EQ(pollsDuring(10000s), 0);
    registerAgentChannel();
    EXPECT_EQ(pollsDuring(3s), 1);

    communication->releaseAll();
    EXPECT_EQ(pollsDuring(60s), 0);
    communication->release("nobody");  // nobody is left: the runner is to pause
    registerAgentChannel();
    EXPECT_EQ(pollsDuring(3s), 1);
    communication->releaseAll();
    communication->registerStatus();
    advance(0s);
    EXPECT_EQ(pollsDuring(3020s), 1);  // at the pace of before
    EXPECT_EQ(timers(), 0);
    EXPECT_THAT(log.lines("[DEBUG] XhrRunner: create"), SizeIs(1));
}

TEST_F(PollRunnerTest, ThePresenceReportSaysWhoAndWhere) {
    const std::string sessionId = *config().visitConfig->sessionId;
    communication->registerStatus();
    EXPECT_THAT(ClientRegistry::clients(), IsEmpty());
    advance(1s);
    // An unknown visitor has been tagged first.
    const auto tags =
        service.requests("POST", "rest/v1/customerstatus/tag/byVisitor/" + *config().visitConfig->visitorId);
    ASSERT_THAT(tags, SizeIs(1));
    const std::string id = *config().activeUserTag->id;
    EXPECT_EQ(tags[0].body, R"({"id":")" + id + R"(","firstname":"","lastname":"","email":""})");
    ASSERT_THAT(ClientRegistry::clients(), SizeIs(1));
    const RegisteredClient first = ClientRegistry::clients().at("STATUS");
    EXPECT_EQ(first.payload, R"({"u":"HomePage","t":"CONFERENCE","dT":"MOBILE","cId":")" + id +
                                 R"(","sId":")" + sessionId + R"("})");

    advance(123ms);
    config().visitConfig.reset();
    platform->app.root.reset();
    communication->registerStatus();
    advance(0s);
    ASSERT_THAT(ClientRegistry::clients(), SizeIs(1));
    const RegisteredClient second = ClientRegistry::clients().at("STATUS");
    EXPECT_EQ(second.payload, R"({"u":"","t":"CONFERENCE","dT":"MOBILE","cId":")" + id + R"("})");
    EXPECT_NE(second.additionalParams, first.additionalParams);
    EXPECT_EQ(second.additionalParams, "joinedTimestamp=1700000004123");
}

}  // namespace
}  // namespace merovanta::testing
