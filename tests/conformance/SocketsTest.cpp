#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::ElementsAre;
using testing::Optional;

/// Keeps all events of one connection, as text, and does more when one comes.
class Sockets : public ConformanceTest {
 protected:
    std::unique_ptr<WebSocket> open(const std::string& url) {
        auto made = platform().webSockets().create(
            {.url = url, .headers = {{"X-QD-SSID", "abc"}}},
            {.didConnect = [this] { note("open"); },
             .didDisconnect =
                 [this](const auto& error) {
                     if (!error) return note("asked");
                     EXPECT_FALSE(!error->code && error->description.empty());
                     note(error->code ? std::to_string(*error->code) : "broken");
                 },
             .didReceiveText = [this](const auto& text) { note("text " + text.substr(0, 20)); },
             .didReceiveData = [this](const auto& data) { note("data " + data); }});
        made->connect();
        EXPECT_TRUE(events.empty()) << "never inside the call";
        return made;
    }

    void note(const std::string& event) {
        EXPECT_TRUE(isOnMain());
        events.push_back(event);
        if (then) then(event);
    }

    [[nodiscard]] bool passUntilEvents(std::size_t count) {
        const bool came = passUntil([&] { return events.size() >= count; });
        // None too many either.
        harness->pass(50ms);
        return came && events.size() == count;
    }

    std::vector<std::string> events;
    std::function<void(const std::string&)> then;
};

TEST_F(Sockets, CarryTextAndDataAndEndWhenAsked) {
    const auto socket = open(harness->serveSockets() + "/api/in?q=a%20b");
    socket->write("lost, not open yet");
    socket->connect();
    ASSERT_TRUE(passUntilEvents(1));
    EXPECT_TRUE(harness->socketRequest().url.ends_with("/api/in?q=a%20b"));
    EXPECT_THAT(harness->socketRequest().headers, testing::Contains(testing::Pair("X-QD-SSID", "abc")));
    const std::string bytes("\0\xFF\r\n", 4);
    harness->sendText("Zo\xC3\xAB");
    harness->sendData(bytes);
    for (const auto& data : {bytes, std::string(), std::string(1 << 20, 'x')})
        socket->write(data);
    ASSERT_TRUE(passUntilEvents(3));
    ASSERT_TRUE(passUntil([&] { return harness->socketReceived().size() == 3; }));
    EXPECT_THAT(harness->socketReceived(), ElementsAre(bytes, "", std::string(1 << 20, 'x')));
    socket->disconnect(4001);
    socket->disconnect(1000);
    ASSERT_TRUE(passUntilEvents(4));
    EXPECT_THAT(harness->socketCloseCode(), Optional(4001));
    EXPECT_THAT(events, ElementsAre("open", "text Zo\xC3\xAB", "data " + bytes, "asked"));
    socket->write("lost");
    // Once more, and given up at once.
    socket->connect();
    socket->disconnect(1000);
    ASSERT_TRUE(passUntilEvents(5));
    EXPECT_EQ(events.back(), "asked");
}

TEST_F(Sockets, TellHowTheyEndAndConnectAgain) {
    auto socket = open(harness->serveSockets());
    std::vector<std::string> expected;
    then = [&](const std::string& event) {
        if (event != "open") socket->connect();
    };
    for (const auto& [code, event] : std::vector<std::pair<std::optional<int>, std::string>>{
             {1000, "1000"}, {std::nullopt, "broken"}, {4000, "4000"}, {1009, "1009"}}) {
        expected.emplace_back("open");
        ASSERT_TRUE(passUntilEvents(expected.size()));
        if (event == "1009") {
            harness->sendText(std::string(WebSocket::maximumMessageBytes + 1, 'x'));
        } else {
            harness->endSocket(code);
        }
        expected.push_back(event);
        ASSERT_TRUE(passUntil([&] { return events.size() >= expected.size(); }));
    }
    ASSERT_TRUE(passUntilEvents(9));
    expected.emplace_back("open");
    EXPECT_EQ(events, expected);
    harness->sendText(std::string(WebSocket::maximumMessageBytes, 'x'));
    EXPECT_TRUE(passUntilEvents(10)) << "just within the bound";
}

TEST_F(Sockets, MayBeDestroyedInAnyEventAndOnTheWay) {
    std::unique_ptr<WebSocket> socket;
    for (const std::string last : {"open", "text x", "data x", "4000", "asked"}) {
        SCOPED_TRACE(last);
        events.clear();
        then = [&](const std::string& event) {
            if (event == last) return socket.reset();
            if (event != "open") return;
            harness->sendText("x");
            harness->sendData("x");
            if (last == "4000") harness->endSocket(4000);
            if (last == "asked") socket->disconnect(1000);
        };
        socket = open(harness->serveSockets());
        ASSERT_TRUE(passUntil([&] { return !socket; }));
        harness->pass(50ms);
        EXPECT_EQ(events.back(), last);
    }
    events.clear();
    open(harness->serveSockets()).reset();
    EXPECT_TRUE(passUntilEvents(0));
}

class Activity : public ConformanceTest {};

TEST_F(Activity, IsObservedByManyUntilTheyLeave) {
    harness->becomeActive();
    harness->resignActive();
    std::vector<std::string> seen;
    auto& application = platform().application();
    const auto resign = application.observeWillResignActive([&] { seen.emplace_back("resign"); });
    const auto active = application.observeDidBecomeActive([&] { seen.emplace_back("active"); });
    std::unique_ptr<Observation> leaving;
    leaving = application.observeWillResignActive([&, kept = std::make_shared<std::string>("leaving")] {
        leaving.reset();
        seen.push_back(*kept);
    });
    for (int round = 0; round < 2; ++round) {
        harness->becomeActive();
        EXPECT_TRUE(application.isActive());
        harness->resignActive();
        EXPECT_FALSE(application.isActive());
    }
    EXPECT_THAT(seen, ElementsAre("active", "resign", "leaving", "active", "resign"));
}

}  // namespace
}  // namespace merovanta::conformance
