#include <gmock/gmock.h>

#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Communication/XhrRunner.h"
#include "General/Panoptra/Injection.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class PollRunnerTest : public LibraryTest {
 protected:
    PollRunnerTest() {
        answerWith(HttpSessionInMemory::reply(200, "[]"));
        runner->currentRate = 3;
        runner->running = true;
    }

    void answerWith(const HttpReply& reply) {
        service.override = [reply](const HttpRequest&) { return reply; };
    }

    [[nodiscard]] std::vector<HttpRequest> polls() const { return service.requests("POST", "api/in/co"); }

    void registerClient(RegisteredClient client) {
        client.callback = [this, id = client.id](const std::string& payload) {
            heard.push_back(id + ":" + payload);
        };
        ClientRegistry::clients()[client.id] = client;
    }

    std::shared_ptr<XhrRunner> runner = std::make_shared<XhrRunner>(
        Injection::resolve<MerovantaAPI>(), Injection::resolve<ApplicationConfigWrapper>());
    std::vector<std::string> heard;
};

TEST_F(PollRunnerTest, OnePollCarriesAllClientsAndItsReplyReachesThem) {
    registerClient({.id = "SCB", .channel = CommunicationChannel::SCB});
    registerClient(
        {.id = "STATUS", .channel = CommunicationChannel::S, .payload = "{}", .additionalParams = "a=1"});
    registerClient({.id = "also", .channel = CommunicationChannel::S, .additionalParams = "b=2"});
    answerWith(HttpSessionInMemory::reply(
        200,
        R"([{"c":"S","p":"hello"},{"c":"??","p":""},{"c":"SCB"},7,{"c":"SCB","p":"{}"},{"c":"JS","p":""}])"));
    runner->start();
    advance(3s);
    ASSERT_THAT(polls(), SizeIs(1));
    EXPECT_EQ(polls()[0].body, R"({"c":["SCB","S"],"m":[{"c":"S","p":"{}"}],"ad":"a=1&b=2"})");
    EXPECT_TRUE(polls()[0].url.starts_with("https://service.example/api/in/co?cId=&sId="));
    advance(20ms);
    EXPECT_THAT(heard, ElementsAre("STATUS:hello", "also:hello", "SCB:{}"));

    for (const std::string body : {"", "{}", "[[[[", "null"}) {
        answerWith(HttpSessionInMemory::reply(200, body));
        advance(3020ms);
    }
    EXPECT_THAT(heard, SizeIs(3));
    EXPECT_THAT(log.lines("[WARNING] XhrRunner: Cannot parse poll reply"), SizeIs(3));
    EXPECT_EQ(platform->time->pendingTimers(), 1);
}

TEST_F(PollRunnerTest, PausesAtTheEleventhFailureInARowAndGoesOnWhenToldTo) {
    const auto paused = [this] { return log.lines("[WARNING] XhrRunner: Exceed max retries. Stop").size(); };
    runner->start();
    const auto fail = [this](int times) {
        answerWith(HttpSessionInMemory::failure("lost"));
        advance(times * 3020ms);
        expectError("[ERROR] XhrRunner: Poll failed: lost", static_cast<std::size_t>(times));
    };
    fail(10);
    answerWith(HttpSessionInMemory::reply(200));
    advance(3020ms);
    fail(10);
    EXPECT_TRUE(runner->running);
    EXPECT_EQ(paused(), 0);
    fail(1);
    EXPECT_FALSE(runner->running);
    EXPECT_EQ(paused(), 1);

    const auto sent = polls().size();
    advance(1h);
    EXPECT_THAT(polls(), SizeIs(sent));
    EXPECT_EQ(platform->time->pendingTimers(), 1);
    answerWith(HttpSessionInMemory::reply(500));
    runner->running = true;
    runner->start();
    runner->start();
    advance(3s);
    EXPECT_THAT(polls(), SizeIs(sent + 1));
    runner->start();  // the poll under way goes on by itself
    advance(3020ms);
    EXPECT_THAT(polls(), SizeIs(sent + 2));
}

TEST_F(PollRunnerTest, AReplyWithoutResponseIsAFailureAfterASuccess) {
    answerWith(HttpReply{});
    runner->start();
    advance(20 * 3020ms);
    expectError("[ERROR] XhrRunner: Poll failed wil nil response", 20);
    EXPECT_TRUE(runner->running);
}

}  // namespace
}  // namespace merovanta::testing
