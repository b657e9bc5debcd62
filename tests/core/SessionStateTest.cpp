#include <gmock/gmock.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string describe(const SessionStatus& status) {
    static constexpr std::array states{"idle", "starting", "sharing", "suspended", "reconnecting", "ended"};
    static constexpr std::array ends{"host", "visitor", "agent", "failure", "restart"};
    static constexpr std::array starters{"host", "invitation", "forced"};
    std::string text = states.at(static_cast<std::size_t>(status.state));
    if (status.endReason) text += std::string(" by ") + ends.at(static_cast<std::size_t>(*status.endReason));
    if (!status.failure.empty()) text += ": " + status.failure;
    if (status.startedBy)
        text += std::string(", ") + starters.at(static_cast<std::size_t>(*status.startedBy));
    return text;
}

class SessionStateTest : public LibraryTest {
 protected:
    SessionStateTest() {
        Merovanta::panoptra().registerCallbacks([this] { told.emplace_back("startCallback"); },
                                                [this] { told.emplace_back("stopCallback"); });
    }

    [[nodiscard]] Outcome outcome() {
        return [this](const std::optional<std::string>& error) {
            told.push_back("outcome " + error.value_or("ok"));
        };
    }

    /// What was told since the last time.
    [[nodiscard]] std::vector<std::string> news() { return std::exchange(told, {}); }

    void say(const nlohmann::json& message) {
        const auto parser = Injection::resolve<BidirectionalMessageParser>();
        parser->handOver({parser->read(message)});
    }

    void refuseInit(HttpReply reply) {
        service.override = [reply](const HttpRequest& request) -> std::optional<HttpReply> {
            if (FakeService::path(request) == "api/in/im/c") return reply;
            return std::nullopt;
        };
    }

    std::vector<std::string> told;
    std::unique_ptr<Observation> observation = Merovanta::panoptra().observe(
        [this](const SessionStatus& status) { told.push_back(describe(status)); });
};

TEST_F(SessionStateTest, TheHostBeginsAndEnds) {
    EXPECT_EQ(Merovanta::panoptra().status(), SessionStatus());
    Merovanta::panoptra().start(outcome());
    EXPECT_THAT(news(), ElementsAre("starting, host")) << "told before the call returns";
    EXPECT_EQ(Merovanta::panoptra().status().shareId, Merovanta::panoptra().shareId());
    EXPECT_EQ(Merovanta::panoptra().status().transport, "");
    advance(1s);
    EXPECT_THAT(news(), ElementsAre("outcome ok", "sharing, host", "startCallback"));
    EXPECT_EQ(Merovanta::panoptra().status().transport, "XhrMessageSender");
    const auto since = Merovanta::panoptra().status().since.value();
    EXPECT_LT(since.time_since_epoch(), platform->clock().sinceEpoch());
    Merovanta::panoptra().start(outcome());
    expectError("[ERROR] MerovantaPanoptra: Error when starting Panoptra: Panoptra is already started");
    EXPECT_THAT(news(), ElementsAre("outcome Panoptra is already started"));
    Merovanta::panoptra().tag("a tag", outcome());
    advance(0s);
    Merovanta::panoptra().tag("late", outcome());
    Merovanta::panoptra().stop();
    advance(0s);
    EXPECT_THAT(news(), ElementsAre("outcome ok", "ended by host, host", "outcome No session is running"));
    Merovanta::panoptra().stop();
    advance(10s);
    EXPECT_THAT(news(), IsEmpty());
    observation.reset();
    startSession();
    EXPECT_THAT(news(), ElementsAre("startCallback"));
}

TEST_F(SessionStateTest, AStartThatComesToNothingSaysWhy) {
    refuseInit(HttpSessionInMemory::failure("lost"));
    Merovanta::panoptra().start(outcome());
    advance(1s);
    expectError("[ERROR] MerovantaPanoptra: Error when starting Panoptra: lost");
    EXPECT_THAT(news(), ElementsAre("starting, host", "outcome lost", "ended by failure: lost, host"));
    service.override = {};
    service.initReply["x"] = true;
    Merovanta::panoptra().start(outcome());
    advance(1s);
    EXPECT_THAT(news(), ElementsAre("starting, host", "outcome The service leaves this visitor alone",
                                    "ended by failure: The service leaves this visitor alone, host"));
    service.initReply["x"] = false;
    Merovanta::panoptra().start("tenant", "token", outcome());
    Merovanta::panoptra().stop();
    EXPECT_THAT(news(), ElementsAre("starting, host", "ended by host, host"));
    advance(1s);
    expectError(
        "[ERROR] MerovantaPanoptra: Error when starting Panoptra: Panoptra was stopped while it started");
    EXPECT_THAT(news(), ElementsAre("outcome Panoptra was stopped while it started"));
}

TEST_F(SessionStateTest, AnAgentInvitesAndTheVisitorEnds) {
    bool isInvited = false;
    service.override = [&](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/in/co" || std::exchange(isInvited, true)) return std::nullopt;
        return HttpSessionInMemory::reply(200, R"([{"c":"SCB","p":"{}"}])");
    };
    Injection::resolve<CoBrowsing>()->startPolling();
    advance(5s);
    EXPECT_THAT(news(), ElementsAre("starting, invitation", "sharing, invitation", "startCallback"));
    platform->widgets().shown()->actions.closeClicked();
    EXPECT_THAT(news(), ElementsAre("ended by visitor, invitation"));
    Merovanta::coBrowsing().start();
    advance(1s);
    Merovanta::coBrowsing().stop();
    EXPECT_THAT(news(),
                ElementsAre("starting, host", "sharing, host", "startCallback", "ended by host, host"));
}

TEST_F(SessionStateTest, AnAgentForcesAndCloses) {
    say({{"co", {{"s", true}}}});
    advance(1s);
    EXPECT_THAT(news(), ElementsAre("starting, forced", "sharing, forced", "startCallback"));
    say({{"a", "c"}, {"co", {{"s", true}}}});
    EXPECT_THAT(news(), ElementsAre("stopCallback", "ended by agent, forced", "starting, forced"));
    advance(1s);
    Merovanta::panoptra().registerCallbacks({}, [] { Merovanta::panoptra().stop(); });
    say({{"a", "c"}});
    EXPECT_THAT(news(), ElementsAre("sharing, forced", "startCallback", "ended by agent, forced"))
        << "whoever helps, it is the agent's doing";
}

TEST_F(SessionStateTest, AnotherVisitorTakesTheSessionsPlace) {
    Merovanta::coBrowsing().start();
    advance(1s);
    const std::string code = Merovanta::panoptra().shareId();
    static_cast<void>(news());
    Merovanta::user().tag({.id = "4711"}, [this](bool) { told.emplace_back("tagged"); });
    advance(1s);
    EXPECT_THAT(news(), ElementsAre("tagged", "ended by restart, host", "starting, host", "sharing, host",
                                    "startCallback"));
    EXPECT_NE(Merovanta::panoptra().status().shareId, code);
    Merovanta::user().clear();
    EXPECT_THAT(news(), ElementsAre("ended by host, host"));

    // Named inside a notification, and the place cannot be taken.
    const auto namer = Merovanta::panoptra().observe([this](const SessionStatus& status) {
        if (status.state != SessionState::sharing) return;
        refuseInit(HttpSessionInMemory::failure("lost"));
        Merovanta::user().tag({.id = "4712"});
    });
    startSession();
    advance(1s);
    EXPECT_THAT(news(),
                ElementsAre("starting, host", "sharing, host", "startCallback", "ended by restart, host",
                            "starting, host", "ended by failure: lost, host"));
}

TEST_F(SessionStateTest, TheBackgroundSuspends) {
    startSession();
    static_cast<void>(news());
    const auto beAway = [this] {
        platform->app.resignActive();
        advance(6s);
        platform->app.becomeActive();
    };
    beAway();
    advance(1s);
    EXPECT_THAT(news(), ElementsAre("suspended, host", "reconnecting, host", "sharing, host"));
    refuseInit(HttpSessionInMemory::failure("lost"));
    beAway();
    advance(1s);
    expectError("[ERROR] Panoptra: Cannot restart session after close: lost");
    EXPECT_THAT(news(), ElementsAre("suspended, host", "reconnecting, host", "ended by failure: lost, host"));
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_THAT(news(), IsEmpty()) << "it has ended once";
}

TEST_F(SessionStateTest, ObserversDoWhatTheyLikeInTheirCalls) {
    std::unique_ptr<Observation> once;
    std::unique_ptr<Observation> later;
    int starts = 0;
    const auto meddler = Merovanta::panoptra().observe([&](const SessionStatus& status) {
        told.push_back("meddler " + describe(status));
        if (status.state == SessionState::sharing) {
            Merovanta::panoptra().tag("shared");
            Merovanta::panoptra().stop();
            EXPECT_EQ(Merovanta::panoptra().status().state, SessionState::ended);
        }
        if (status.state == SessionState::ended && ++starts == 1) {
            Merovanta::panoptra().start();
            later = Merovanta::panoptra().observe(
                [&](const SessionStatus& other) { told.push_back("later " + describe(other)); });
        }
    });
    once = Merovanta::panoptra().observe([&](const SessionStatus& status) {
        told.push_back("once " + describe(status));
        once.reset();
    });
    Merovanta::panoptra().start();
    EXPECT_THAT(news(), ElementsAre("starting, host", "meddler starting, host", "once starting, host"));
    advance(1s);
    const std::vector<std::string> round{"sharing, host", "meddler sharing, host", "ended by host, host",
                                         "meddler ended by host, host"};
    std::vector<std::string> expected = round;
    expected.insert(expected.end(), {"starting, host", "meddler starting, host"});
    for (const auto& line : round) {
        expected.push_back(line);
        if (line.starts_with("meddler ")) expected.push_back("later " + line.substr(8));
    }
    EXPECT_EQ(news(), expected) << "each hears of all, in order, and of nothing from before it came";
    EXPECT_EQ(Merovanta::panoptra().status().state, SessionState::ended);
}

TEST_F(SessionStateTest, AnObserverMayGoBeforeItsTurn) {
    std::unique_ptr<Observation> second;
    const auto first = Merovanta::panoptra().observe([&](const SessionStatus&) { second.reset(); });
    second = Merovanta::panoptra().observe([&](const SessionStatus&) { told.emplace_back("second"); });
    Merovanta::panoptra().start();
    EXPECT_THAT(news(), ElementsAre("starting, host"));
    inmemory::PlatformInMemory::uninstall();
    observation.reset();
    EXPECT_EQ(Merovanta::panoptra().observe([](const SessionStatus&) {}), nullptr);
    expectError("[ERROR] MerovantaPanoptra: Cannot find instance of Panoptra");
}

}  // namespace
}  // namespace merovanta::testing
