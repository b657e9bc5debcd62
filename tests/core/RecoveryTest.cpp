#include <gmock/gmock.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Panoptra/Injection.h"
#include "support/LibraryTest.h"
#include "support/MemoryMeter.h"
#include "support/Png.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using State = SessionState;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Le;
using ::testing::SizeIs;

class RecoveryTest : public LibraryTest {
 protected:
    /// Nothing reaches the service any more: refused at once, or without any answer.
    void cut(bool isSilent = false) {
        service.override = [](const HttpRequest&) {
            return HttpSessionInMemory::failure("No route to host");
        };
        platform->httpSession().latency = isSilent ? 60s : 20ms;
    }

    void restore() {
        service.override = {};
        platform->httpSession().latency = 20ms;
    }

    [[nodiscard]] std::vector<HttpRequest> checks() const { return service.requests("GET", "api/ic/h"); }

    void requestsFail(std::size_t times) { expectError("[ERROR] XhrMessageSender: Request failed", times); }

    std::vector<State> states;
    std::unique_ptr<Observation> observation = Merovanta::panoptra().observe(
        [this](const SessionStatus& status) { states.push_back(status.state); });
};

TEST_F(RecoveryTest, ADroppedRequestIsRecoveredFromUnderTheSameIdsAndLosesNothing) {
    requestsFail(1);
    startSession();
    const VisitConfig visit = *config().visitConfig;
    states.clear();
    Merovanta::panoptra().tag("in the dropped request");
    int posts = 0;
    service.override = [&](const HttpRequest& request) -> std::optional<HttpReply> {
        if (request.method != "POST" || FakeService::path(request) != "api/ix/m" || ++posts > 1)
            return std::nullopt;
        return HttpSessionInMemory::failure("Connection lost");
    };
    advance(200ms);
    EXPECT_THAT(states, ElementsAre(State::reconnecting, State::sharing));
    advance(1s);
    EXPECT_THAT(checks(), SizeIs(1));
    EXPECT_THAT(service.tags(), ElementsAre("in the dropped request", "in the dropped request"));
    EXPECT_THAT(service.screenshots(), SizeIs(2)) << "one whole picture";
    EXPECT_EQ(config().visitConfig->visitId, visit.visitId);
    const auto gets = service.requests("GET", "api/ix/m");
    ASSERT_THAT(gets, SizeIs(2));
    EXPECT_EQ(gets[0].url, gets[1].url);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, AnOutageIsWaitedOutAndWhatTheVisitorDidMeanwhileArrives) {
    requestsFail(1);
    startSession();
    cut();
    advance(2s);
    EXPECT_EQ(states.back(), State::reconnecting);
    const auto captures = platform->screenCapture().captures;
    for (int i = 0; i < 20; ++i) {
        paint(0xFF000000U + static_cast<std::uint32_t>(i));
        platform->tapRecognizers().tap({static_cast<double>(i), 0});
        Merovanta::panoptra().tag(std::to_string(i));
        advance(1s);
    }
    platform->app.root->className = "AccountPage";
    EXPECT_EQ(platform->screenCapture().captures, captures) << "nobody would see them";
    EXPECT_EQ(timers(), 1) << "that of the health check";
    restore();
    advance(3s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_THAT(service.tags(), SizeIs(20));
    EXPECT_THAT(service.taps(), SizeIs(20));
    EXPECT_THAT(service.screenshots(), SizeIs(2));
    EXPECT_THAT(service.pageChanges(), ElementsAre("AccountPage"));
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, ChecksFollowEverySecondAtFirstAndEveryTenAtLast) {
    requestsFail(1);
    startSession();
    cut();
    advance(1s);
    const auto early = checks().size();
    advance(8s);
    EXPECT_THAT(checks().size() - early, AllOf(Ge(7), Le(8)));
    advance(10min);
    const auto late = checks().size();
    advance(100s);
    EXPECT_EQ(checks().size() - late, 10);
}

TEST_F(RecoveryTest, AServiceThatIsWellButTakesNoStreamIsNotStormed) {
    startSession();
    service.override = [](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/ix/m" || request.method == "DELETE") return std::nullopt;
        return HttpSessionInMemory::failure("Connection lost");
    };
    const auto before = platform->httpSession().requests.size();
    advance(1min);
    EXPECT_LE(platform->httpSession().requests.size() - before, 130);
    requestsFail(log.lines("[ERROR] XhrMessageSender: Request failed").size());
    restore();
    advance(11s);
    EXPECT_EQ(states.back(), State::sharing);
}

TEST_F(RecoveryTest, ANetworkThatSwallowsEverythingIsNoticedAndItsReturnToo) {
    startSession();
    cut(/*isSilent=*/true);
    Merovanta::panoptra().tag("swallowed");
    advance(6s);
    EXPECT_EQ(states.back(), State::reconnecting);
    advance(24s);
    restore();
    advance(3s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_THAT(service.tags(), Contains("swallowed"));
    advance(60s);  // the answers to what was given up make no difference
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, ARequestThatHangsWhileTheServiceIsWellIsGivenUpAndMadeAgain) {
    startSession();
    const auto checked = checks().size();
    states.clear();
    Merovanta::panoptra().tag("swallowed");
    platform->httpSession().latencyOf = [](const HttpRequest& request) { return request.timeout; };
    advance(100ms);
    platform->httpSession().latencyOf = {};
    advance(1400ms);
    EXPECT_THAT(states, IsEmpty());
    advance(300ms);
    EXPECT_THAT(states, ElementsAre(State::reconnecting, State::sharing));
    EXPECT_THAT(checks(), SizeIs(checked + 1));
    advance(1s);
    EXPECT_THAT(service.tags(), ElementsAre("swallowed", "swallowed")) << "it may not have come through";
    states.clear();
    advance(2min);
    EXPECT_THAT(states, IsEmpty()) << "whatever becomes of the request that was given up";
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, ASlowNetworkIsGivenTheTimeItTakes) {
    startSession();
    const auto posts = [this] { return service.requests("POST", "api/ix/m").size(); };
    platform->httpSession().latencyOf = [](const HttpRequest& request) {
        const bool isRound = request.method == "POST" && FakeService::path(request) == "api/ix/m";
        return isRound ? 20s : 20ms;
    };
    const auto before = posts();
    Merovanta::panoptra().tag("slow");
    advance(50s);
    EXPECT_LE(posts() - before, 6) << "each time it is waited for twice as long";
    EXPECT_EQ(states.back(), State::sharing);
    // Known by then, also after some that were quick.
    states.clear();
    const auto gets = service.requests("GET", "api/ix/m").size();
    advance(5min);
    EXPECT_THAT(states, IsEmpty());
    platform->httpSession().latencyOf = [quick = 0](const HttpRequest& request) mutable {
        const bool isRound = request.method == "POST" && FakeService::path(request) == "api/ix/m";
        return isRound && ++quick % 6 == 0 ? 20s : 20ms;
    };
    advance(5min);
    EXPECT_THAT(service.requests("GET", "api/ix/m"), SizeIs(gets));
    platform->httpSession().latencyOf = {};
    advance(1min);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, StopBackgroundAndRestartEndIt) {
    requestsFail(3);
    startSession();
    cut();
    advance(2s);
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
    restore();
    const auto gets = service.requests("GET", "api/ix/m").size();
    advance(1min);
    EXPECT_EQ(service.requests("GET", "api/ix/m").size(), gets);

    startSession();
    cut();
    advance(2s);
    platform->app.resignActive();
    advance(5s);
    EXPECT_EQ(states.back(), State::suspended);
    advance(1s);
    EXPECT_EQ(timers(), 0);
    restore();
    platform->app.becomeActive();
    advance(1s);
    EXPECT_EQ(states.back(), State::sharing);

    cut();
    advance(2s);
    restore();
    Merovanta::user().tag({.id = "4711"});
    advance(2s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_NE(service.requests("GET", "api/ix/m").back().url.find("vId=4711"), std::string::npos);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, AnApplicationThatIsAwayWhenItStartsIsTreatedAsOneThatGoes) {
    platform->app.resignActive();
    startSession();
    EXPECT_EQ(states.back(), State::sharing);
    advance(4s);
    EXPECT_EQ(states.back(), State::suspended);
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
    platform->app.becomeActive();
    advance(1s);
    EXPECT_EQ(states.back(), State::sharing);
    Merovanta::panoptra().stop();

    // Away in the middle of a start that takes long: closed as soon as it is over.
    platform->httpSession().latency = 6s;
    Merovanta::panoptra().start();
    platform->app.resignActive();
    advance(6s);
    EXPECT_EQ(states.back(), State::suspended);
    platform->httpSession().latency = 20ms;
    advance(6s);
    EXPECT_EQ(timers(), 0);
    platform->app.becomeActive();
    advance(1s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(timers(), timersOfASession);
    Merovanta::panoptra().stop();

    // A host that ends it as soon as it hears that it has begun.
    const auto deletes = [this] { return service.requests("DELETE", "api/ix/m").size(); };
    platform->httpSession().latency = 6s;
    Merovanta::panoptra().start([](const auto&) { Merovanta::panoptra().stop(); });
    platform->app.resignActive();
    advance(5500ms);
    const auto before = deletes();
    advance(20s);
    EXPECT_EQ(deletes(), before + 1);
    EXPECT_EQ(states.back(), State::ended);
    EXPECT_EQ(timers(), 0);
}

TEST_F(RecoveryTest, ADayWithAnOutageAnHourLeavesOneOfEachAndNoMemoryBehind) {
    const std::string drawing = base64(png(39, 84, 0x80FF0000));
    const auto minute = [&](int number) {
        // The agent closes it now and then.
        if (!Merovanta::panoptra().status().isRunning()) startSession();
        const bool isOutage = number % 60 == 31;
        if (isOutage) cut(number % 120 == 31);
        const std::string tag = "minute " + std::to_string(number);
        paint(0xFF000000U + static_cast<std::uint32_t>(number % 200));
        platform->tapRecognizers().tap({10, 20});
        platform->app.root->className = number % 2 == 0 ? "HomePage" : "AccountPage";
        service.agentMessages = {{{"x", number},
                                  {"y", 7},
                                  {"co", {{"b", true}, {"opt", number % 7 == 0}, {"s", number % 50 == 0}}}},
                                 {{"d", {{"u", drawing}}}, {"a", number % 100 == 99 ? "c" : "-"}}};
        Merovanta::panoptra().tag(tag);
        if (number % 7 == 0) platform->alerts().answer(number % 2 == 0);
        if (number % 3 == 0) {
            platform->app.resignActive();
            advance(5s);
            platform->app.becomeActive();
        }
        if (isOutage) advance(40s);
        restore();
        advance(1min);
        if (isOutage) {
            EXPECT_EQ(states.back(), State::sharing);
            EXPECT_THAT(service.tags(), Contains(tag));
        }
        platform->httpSession().requests.clear();
        states.clear();
    };
    Injection::resolve<CoBrowsing>()->startPolling();
    startSession();
    for (int number = 0; number < 60; ++number)
        minute(number);
    const std::int64_t memory = bytesInUse();
    for (int number = 60; number < 24 * 60; ++number)
        minute(number);
    EXPECT_LE(bytesInUse(), memory + memory / 100);
    for (const char* error :
         {"[ERROR] XhrMessageSender: Request failed", "[ERROR] XhrRunner: Poll failed: No route to host"})
        expectError(error, log.lines(error).size());
    EXPECT_EQ(timers(), timersOfASession);
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
    EXPECT_EQ(platform->tapRecognizers().attached(), 0);
}

}  // namespace
}  // namespace merovanta::testing
