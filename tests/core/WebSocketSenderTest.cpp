#include "General/Panoptra/Network/Message/WebSocket/WebSocketMessageSender.h"

#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::WebSocketPeerInMemory;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class WebSocketSenderTest : public LibraryTest {
 protected:
    void connect() {
        sender->connect(
            "Page", [this] { outcomes.emplace_back("open"); }, [this] { outcomes.emplace_back("failed"); });
    }

    /// Lets the waiting connection come about.
    void accept() {
        peer().accept();
        advance(0s);
    }

    void lose(std::optional<int> code) {
        peer().fail({.code = code, .description = "lost"});
        advance(0s);
    }

    WebSocketPeerInMemory& peer() { return *platform->webSockets().peers.back(); }

    /// The outcome of one send.
    std::string send(const std::string& tag) {
        std::string outcome = "pending";
        sender->sendTag(tag, 0,
                        [&](const auto& error) { outcome = error ? error->errorDescription() : "sent"; });
        advance(0s);
        return outcome;
    }

    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> found;
        for (const auto& line : log.lines("["))
            if (line.find("] WebSocketMessageSender: ") != std::string::npos) found.push_back(line);
        return found;
    }

    std::shared_ptr<WebSocketMessageSender> sender =
        Injection::resolve<MessageSenderManager>()->webSocketSender;
    std::vector<std::string> outcomes;
};

TEST_F(WebSocketSenderTest, TheAddressCarriesTheSessionTwiceAndTheHandshakeItsHeader) {
    config().visitConfig->update("V", "visitor", "S");
    config().panoptraConfig->shareId = "12345";
    config().panoptraConfig->storageType = "l";
    connect();
    EXPECT_EQ(peer().request.url,
              "wss://service.example/api/in/imws?tId=tenant&sId=S&vId=visitor&t=token&id=V&shrId=12345&vsId=S"
              "&url=Page&fsTy=l");
    EXPECT_EQ(FakeService::header(peer().request, "X-QD-SSID"), "S");
    EXPECT_EQ(peer().request.timeout, 60s);
    EXPECT_THAT(lines(), ElementsAre("[DEBUG] WebSocketMessageSender: Connect to " + peer().request.url));

    config().hostname = "[";
    connect();
    EXPECT_THAT(platform->webSockets().peers, SizeIs(1));
    EXPECT_EQ(lines().back(), "[WARNING] WebSocketMessageSender: Cannot construct URL");
    accept();
    EXPECT_THAT(outcomes, ElementsAre("open"));
}

TEST_F(WebSocketSenderTest, SendsOneMessageAFrameAndOnlyOnceItWasOpen) {
    EXPECT_EQ(send("early"), "No socket found");
    connect();
    EXPECT_EQ(send("early"), "Sender is closed");
    accept();
    EXPECT_EQ(send("a"), "sent");
    EXPECT_EQ(send("b"), "sent");
    ASSERT_THAT(peer().received, SizeIs(2));
    ProtoMessageList list;
    ASSERT_TRUE(list.ParseFromString(peer().received[1]));
    ASSERT_EQ(list.messages_size(), 1);
    EXPECT_EQ(list.messages(0).tag(), "b");

    sender->close();
    EXPECT_THAT(service.requests("DELETE", "api/ix/m"), SizeIs(1));
    EXPECT_EQ(peer().closeCode, 1000);
    EXPECT_EQ(send("late"), "Sender is closed");
    advance(1min);
    EXPECT_EQ(peer().attempts, 1);
    EXPECT_THAT(outcomes, ElementsAre("open"));

    connect();
    accept();
    EXPECT_EQ(send("again"), "sent");
    EXPECT_THAT(outcomes, ElementsAre("open", "open"));
}

TEST_F(WebSocketSenderTest, AFirstConnectionThatFailsIsReportedOnceAndNotTriedAgain) {
    connect();
    lose(std::nullopt);
    EXPECT_THAT(outcomes, ElementsAre("failed"));
    EXPECT_EQ(peer().attempts, 1);
    EXPECT_EQ(lines().back(), "[WARNING] WebSocketMessageSender: Connection closed with unknown error");

    // Callbacks that are replaced are dropped, those of the socket in use as well as of the one before.
    connect();
    connect();
    accept();
    EXPECT_THAT(outcomes, ElementsAre("failed", "open"));
    sender->connect("Page", {}, [this] { connect(); });
    lose(4000);
    accept();
    EXPECT_THAT(outcomes, ElementsAre("failed", "open", "open"));
}

TEST_F(WebSocketSenderTest, AConnectionThatIsLostIsOpenedAgainAtOnceAndNothingIsLostMeanwhile) {
    connect();
    accept();
    const auto logged = lines().size();
    lose(1006);
    EXPECT_EQ(peer().attempts, 2);
    std::string outcome = "waits";
    sender->sendTag("kept", 0, [&](const auto& error) { outcome = error ? error->mMsg : "sent"; });
    lose(std::nullopt);
    EXPECT_EQ(peer().attempts, 2) << "no more than four times a second";
    advance(250ms);
    lose(1000);
    advance(250ms);
    EXPECT_EQ(outcome, "waits");
    accept();
    EXPECT_EQ(outcome, "sent");
    EXPECT_EQ(peer().attempts, 4);
    EXPECT_THAT(peer().received, SizeIs(1));
    EXPECT_THAT(outcomes, ElementsAre("open"));
    const auto all = lines();
    EXPECT_THAT(std::vector(all.begin() + static_cast<std::ptrdiff_t>(logged), all.end()),
                ElementsAre("[WARNING] WebSocketMessageSender: Connection closed: 1006",
                            "[DEBUG] WebSocketMessageSender: Connect again",
                            "[WARNING] WebSocketMessageSender: Connection closed with unknown error",
                            "[DEBUG] WebSocketMessageSender: Connect again",
                            "[DEBUG] WebSocketMessageSender: Connection closed",
                            "[DEBUG] WebSocketMessageSender: Connect again",
                            "[DEBUG] WebSocketMessageSender: Connection opened"));
}

TEST_F(WebSocketSenderTest, AServiceThatIsAwayIsNotStormed) {
    connect();
    accept();
    const auto attemptsIn = [this](std::chrono::seconds duration) {
        const int before = peer().attempts;
        for (auto passed = 0ms; passed < duration; passed += 10ms) {
            advance(10ms);
            lose(1006);
        }
        return peer().attempts - before;
    };
    EXPECT_LE(attemptsIn(1s), 4);
    EXPECT_LE(attemptsIn(1s), 4);
    attemptsIn(5s);
    EXPECT_LE(attemptsIn(60s), 12);
    // One that opens only to close again is no end of it; one that holds is.
    accept();
    EXPECT_LE(attemptsIn(10s), 2);
    advance(5s);
    accept();
    advance(5s);
    EXPECT_EQ(attemptsIn(1s), 4);
    sender->close();
    advance(1min);
    EXPECT_EQ(timers(), 0);
}

TEST_F(WebSocketSenderTest, TextsAreTheAgentsMessagesIfTheyAreObjects) {
    const std::string source = "[ERROR] WebSocketMessageSender: ";
    connect();
    accept();
    peer().sendText(R"({"co":{"b":false}})");
    advance(0s);
    EXPECT_EQ(config().panoptraConfig->increasedPollingFrequency, true);
    EXPECT_THAT(log.lines("[DEBUG] BidirectionalMessageHandler: Handle message: "), SizeIs(1));

    peer().sendText(R"({"co":)");
    peer().sendText("");
    advance(0s);
    const auto errors = log.lines(source + "Cannot parse JSON of WebSocket response: ");
    ASSERT_THAT(errors, SizeIs(2));
    EXPECT_NE(errors[0].find("unexpected end of input"), std::string::npos);
    for (const auto& error : errors)
        expectError(error);
    peer().sendText("[1, \"a\"]");
    expectError(source + R"(Cannot convert to dict: [1,"a"])");
    peer().sendText(std::string(1'000'000, '[') + std::string(1'000'000, ']'));
    expectError(source + "Cannot parse JSON of WebSocket response: too deep");
    peer().sendText("[" + std::string(1'999'998, ' ') + "]");
    expectError(source + "Cannot convert to dict: a value of 2000000 bytes");
    peer().sendData("{}");
    expectError(source + "Received unexpected binary data");
    advance(0s);
    peer().sendText(std::string(WebSocket::maximumMessageBytes + 1, ' '));
    advance(0s);
    EXPECT_EQ(peer().attempts, 2);
    EXPECT_TRUE(log.contains("[WARNING] WebSocketMessageSender: Connection closed: 1009"));
}

TEST_F(WebSocketSenderTest, NothingArrivesWhenItIsGone) {
    connect();
    accept();
    peer().sendText("[]");
    const auto kept = platform->webSockets().peers.back();
    sender.reset();
    Injection::discard();
    advance(1s);
    EXPECT_EQ(kept->state, WebSocketPeerInMemory::State::idle);
}

}  // namespace
}  // namespace merovanta::testing
