#include "General/Panoptra/Network/HealthCheck.h"

#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/MonitoringLogDTO.h"
#include "General/Panoptra/Network/MonitoringSender.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::SizeIs;

class HealthCheckTest : public LibraryTest {
 protected:
    void answerWith(const HttpReply& reply) {
        service.override = [reply](const HttpRequest&) { return reply; };
    }

    std::shared_ptr<HealthCheck> check = Injection::resolve<HealthCheck>();
    int healthy = 0;
};

TEST_F(HealthCheckTest, OnlyA200PassesAndOnlyOneCheckRuns) {
    const auto start = [this] { check->start({.healthy = [this] { ++healthy; }}); };
    answerWith(HttpSessionInMemory::reply(204));
    start();
    start();
    advance(1s);
    answerWith(HttpSessionInMemory::failure("No route to host"));
    advance(1020ms);
    EXPECT_EQ(healthy, 0);
    EXPECT_TRUE(check->isRunning());
    EXPECT_THAT(service.requests("GET", "api/ic/h"), SizeIs(2));
    answerWith(HttpSessionInMemory::reply(200));
    advance(10s);
    EXPECT_EQ(healthy, 1);
    EXPECT_FALSE(check->isRunning());
    EXPECT_EQ(service.requests("GET", "api/ic/h").back().url, "https://service.example/api/ic/h");

    // Neither a good answer nor a bad one counts after a stop.
    for (const int status : {200, 500}) {
        answerWith(HttpSessionInMemory::reply(status));
        start();
        check->stop();
        advance(10s);
        EXPECT_EQ(healthy, 1);
        EXPECT_EQ(timers(), 0);
    }
}

TEST_F(HealthCheckTest, AnAddressThatIsNoneIsTriedAgain) {
    config().hostname = "[";
    check->start({.healthy = [this] { ++healthy; }});
    advance(5s);
    EXPECT_EQ(healthy, 0);
    config().hostname = "service.example";
    answerWith(HttpSessionInMemory::reply(200));
    advance(2s);
    EXPECT_EQ(healthy, 1);
}

TEST_F(HealthCheckTest, TheActivityLogIsKeptByKeysOfOneLetter) {
    config().visitConfig->sessionId = "S1";
    const std::string meta = VisitorMetadata().toJson().dump();
    std::vector<std::string> outcomes;
    const auto note = [&](const std::optional<StringError>& error) {
        outcomes.push_back(error ? error->errorDescription() : "ok");
    };
    const auto sender = Injection::resolve<MonitoringSender>();
    sender->logCoBrowsingStart(note);
    advance(1s);
    EXPECT_EQ(service.requests("POST", "api/in/io/l").front().body, R"({"c":"c","t":"cs","m":)" + meta + "}");
    answerWith(HttpSessionInMemory::reply(503));
    sender->logCoBrowsingStop(note);
    advance(1s);
    answerWith(HttpSessionInMemory::failure("Connection lost"));
    sender->logCoBrowsingAccept(note);
    advance(1s);
    config().tenantId = "\xFF";
    sender->logCoBrowsingAccept(note);
    ASSERT_THAT(outcomes, SizeIs(4));
    EXPECT_EQ(outcomes[0], "ok");
    EXPECT_EQ(outcomes[1], "HTTP status 503");
    EXPECT_EQ(outcomes[2], "Connection lost");

    auto record = MonitoringLogDTO::decode(
        {{"c", "custom"}, {"t", "cd"}, {"v", "x"}, {"m", {{"tId", "t"}, {"vId", nullptr}}}});
    ASSERT_TRUE(record);
    EXPECT_EQ(record.value().type, VisitorActivityLogType::COBROWSE_DECLINE);
    EXPECT_EQ(record.value().toJson().dump(), R"({"c":"custom","t":"cd","v":"x","m":{"tId":"t"}})");
    EXPECT_FALSE(MonitoringLogDTO::decode({{"c", "c"}, {"t", "cx"}, {"m", nlohmann::json::object()}}));
    EXPECT_FALSE(MonitoringLogDTO::decode({{"c", "c"}, {"t", "cs"}, {"m", "x"}}));
}

}  // namespace
}  // namespace merovanta::testing
