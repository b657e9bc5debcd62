#include <gmock/gmock.h>

#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::WebSocketPeerInMemory;
using State = SessionState;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class TransportChoiceTest : public LibraryTest {
 protected:
    TransportChoiceTest() { Merovanta::panoptra().preferWebSocket(true); }

    void accept() {
        peer().accept();
        advance(1s);
    }

    [[nodiscard]] WebSocketPeerInMemory& peer() { return *platform->webSockets().peers.back(); }

    [[nodiscard]] bool isPolling() const { return !service.requests("GET", "api/ix/m").empty(); }

    /// The messages that the last connection has carried.
    [[nodiscard]] std::vector<ProtoMessage> received() {
        std::vector<ProtoMessage> messages;
        for (const auto& frame : peer().received) {
            ProtoMessageList list;
            EXPECT_TRUE(list.ParseFromString(frame));
            messages.insert(messages.end(), list.messages().begin(), list.messages().end());
        }
        return messages;
    }

    std::vector<State> states;
    std::unique_ptr<Observation> observation = Merovanta::panoptra().observe(
        [this](const SessionStatus& status) { states.push_back(status.state); });
};

TEST_F(TransportChoiceTest, ASessionOfAHostThatPrefersItUsesTheWebSocket) {
    startSession();
    EXPECT_THAT(states, ElementsAre(State::starting)) << "until it opens";
    accept();
    EXPECT_THAT(states, ElementsAre(State::starting, State::sharing));
    EXPECT_TRUE(log.contains("[DEBUG] Panoptra: Selected message sender: WebSocketMessageSender"));
    EXPECT_FALSE(isPolling());
    EXPECT_EQ(received().front().screenshotevent_size(), 1);
    int taps = 0;
    screen->onTap = [&] { ++taps; };
    peer().sendText(R"({"x":1,"y":1})");
    advance(0s);
    EXPECT_EQ(taps, 1) << "without waiting for a ping";
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
}

TEST_F(TransportChoiceTest, AVetoALateOpeningAndAnEarlyCloseLeaveItToPolling) {
    service.initReply["pnWS"] = true;
    startSession();
    EXPECT_TRUE(isPolling());
    EXPECT_THAT(platform->webSockets().peers, IsEmpty());
    Merovanta::panoptra().stop();
    service.initReply.erase("pnWS");

    const auto gets = [this] { return service.requests("GET", "api/ix/m").size(); };
    startSession();
    advance(3900ms);
    EXPECT_EQ(gets(), 1);
    advance(200ms);
    EXPECT_EQ(gets(), 2);
    EXPECT_EQ(states.back(), State::sharing);
    accept();  // too late
    EXPECT_THAT(service.messages(), Not(IsEmpty()));
    EXPECT_EQ(peer().state, WebSocketPeerInMemory::State::idle);
    EXPECT_EQ(timers(), 4);
    Merovanta::panoptra().stop();

    startSession();
    peer().fail({.code = 1006, .description = "refused"});
    advance(1s);
    EXPECT_EQ(gets(), 3);
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(peer().attempts, 1);
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(2)) << "of streams that were";
    Merovanta::panoptra().stop();
    advance(1s);
    EXPECT_EQ(timers(), 0);
}

TEST_F(TransportChoiceTest, AConnectionThatIsLostReconnectsAndTheSessionSaysSo) {
    startSession();
    accept();
    states.clear();
    peer().fail({.code = 1006, .description = "lost"});
    advance(1s);
    EXPECT_THAT(states, ElementsAre(State::reconnecting));
    Merovanta::panoptra().tag("meanwhile");
    platform->tapRecognizers().tap({3, 4});
    peer().received.clear();
    accept();
    EXPECT_THAT(states, ElementsAre(State::reconnecting, State::sharing));
    const auto messages = received();
    ASSERT_GE(messages.size(), 3);
    EXPECT_EQ(messages[0].tag(), "meanwhile");
    EXPECT_EQ(messages[1].clickevent(0).y(), 4);
    EXPECT_EQ(messages[2].screenshotevent_size() + messages[3].screenshotevent_size(), 1);
    EXPECT_THAT(service.requests("GET", "api/ic/h"), IsEmpty());
}

TEST_F(TransportChoiceTest, AReturnUsesTheStoredTransportUnlessItFails) {
    startSession();
    accept();
    const auto stayAway = [this] {
        platform->app.resignActive();
        advance(6s);
        platform->app.becomeActive();
        advance(1s);
    };
    stayAway();
    EXPECT_EQ(states.back(), State::reconnecting);
    accept();
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(received().back().screenshotevent_size() + received().front().screenshotevent_size(), 1);
    EXPECT_FALSE(isPolling());

    stayAway();
    advance(5s);
    EXPECT_TRUE(log.contains("[WARNING] Panoptra: WebSocket reconnect failed"));
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(states.back(), State::sharing);
    EXPECT_EQ(timers(), 4);
}

}  // namespace
}  // namespace merovanta::testing
