#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "support/LibraryTest.h"
#include "support/MemoryMeter.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using State = Session::State;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Le;
using ::testing::SizeIs;

// Round, ping, pictures, page check.
constexpr std::size_t timersOfASession = 4;

class RecoveryTest : public LibraryTest {
 protected:
    RecoveryTest() {
        Injection::resolve<Panoptra>()->observeState(
            [this](const Session::Change& change) { states.push_back(change.state); });
    }

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

    [[nodiscard]] std::vector<std::string> tags() const {
        std::vector<std::string> tags;
        for (const auto& message : service.messages()) {
            if (message.has_tag()) tags.push_back(message.tag());
        }
        return tags;
    }

    void requestsFail(std::size_t times) { expectError("[ERROR] XhrMessageSender: Request failed", times); }

    std::vector<State> states;
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
    EXPECT_THAT(tags(), ElementsAre("in the dropped request", "in the dropped request"));
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
    const auto before = service.messages().size();
    restore();
    advance(3s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_THAT(tags(), SizeIs(20));
    std::vector<float> taps;
    const auto messages = service.messages();
    for (std::size_t i = before; i < messages.size(); ++i) {
        for (const auto& click : messages[i].clickevent())
            taps.push_back(click.x());
    }
    EXPECT_THAT(taps, SizeIs(20));
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
    EXPECT_THAT(tags(), Contains("swallowed"));
    advance(60s);  // the answers to what was given up make no difference
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, ASlowNetworkIsLeftToItself) {
    startSession();
    platform->httpSession().latency = 20s;
    states.clear();
    Merovanta::panoptra().tag("slow");
    advance(150ms);
    platform->httpSession().latency = 20ms;  // the rest is well
    advance(19s);
    EXPECT_THAT(states, IsEmpty());
    advance(2s);
    EXPECT_THAT(tags(), ElementsAre("slow"));
    EXPECT_THAT(service.requests("GET", "api/ix/m"), SizeIs(1));
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
    platform->httpSession().latency = 4s;
    Merovanta::panoptra().start();
    platform->app.resignActive();
    advance(6s);
    EXPECT_EQ(states.back(), State::suspended);
    platform->httpSession().latency = 20ms;
    advance(5s);
    EXPECT_EQ(timers(), 0);
    platform->app.becomeActive();
    advance(1s);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, AStreamThatIsReplacedIsClosedBefore) {
    startSession();
    const std::string visitId = *config().visitConfig->visitId;
    platform->app.becomeActive();  // without having been away
    advance(1s);
    const auto deletes = service.requests("DELETE", "api/ix/m");
    ASSERT_THAT(deletes, SizeIs(1));
    EXPECT_NE(deletes[0].url.find("id=" + visitId), std::string::npos);
    EXPECT_NE(*config().visitConfig->visitId, visitId);
    EXPECT_EQ(timers(), timersOfASession);

    const std::string second = *config().visitConfig->visitId;
    Merovanta::user().tag({.email = "a@b.example"});
    advance(1s);
    EXPECT_NE(service.requests("DELETE", "api/ix/m").back().url.find("id=" + second), std::string::npos);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(RecoveryTest, ADayWithAnOutageAnHourLeavesOneOfEachAndNoMemoryBehind) {
    const auto hour = [this](int number) {
        paint(0xFF000000U + static_cast<std::uint32_t>(number));
        advance(30min);
        cut(number % 2 == 0);
        platform->tapRecognizers().tap({1, 1});
        Merovanta::panoptra().tag("hour " + std::to_string(number));
        advance(40s);
        restore();
        advance(30min - 40s);
        EXPECT_EQ(states.back(), State::sharing);
        EXPECT_THAT(tags(), Contains("hour " + std::to_string(number)));
        platform->httpSession().requests.clear();
        platform->httpSession().requests.shrink_to_fit();
        states.clear();
        states.shrink_to_fit();
    };
    startSession();
    hour(0);
    const std::int64_t memory = bytesInUse();
    for (int number = 1; number < 24; ++number)
        hour(number);
    EXPECT_LE(bytesInUse(), memory + memory / 100);
    requestsFail(log.lines("[ERROR] XhrMessageSender: Request failed").size());
    EXPECT_EQ(timers(), timersOfASession);
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
}

}  // namespace
}  // namespace merovanta::testing
