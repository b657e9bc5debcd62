#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "Service.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice::test {
namespace {

using std::chrono::seconds;

constexpr Moment kStart{std::chrono::seconds(1'700'000'000)};

class CountingObserver : public VisitorObserver {
 public:
    void visitorChanged(const Visitor&) override {}
    void frameArrived(const Visitor&) override { ++frames; }
    void visitorRemoved(const Visitor& visitor) override { removed.insert(visitor.sessionId()); }

    int frames = 0;
    std::set<std::string> removed;
};

TEST(Visitor, KeepsABoundedPastHoweverLongItStreams) {
    CountingObserver observer;
    Visitor visitor(1, "T", "S", kStart, observer);
    visitor.connected("Page", Transport::Polling, kStart);
    ProtoMessageList list;
    list.add_messages()->add_clickevent();
    list.add_messages()->add_screenshotevent()->set_image(jpeg(10, 20));
    const auto framesPerSecond = [&](int at) {
        return visitor.summary(kStart + seconds(at))["framesPerSecond"];
    };
    for (int i = 0; i < 5000; ++i) {
        visitor.received(list, 100, Transport::Polling, kStart + seconds(i));
        if (i == 2) {
            EXPECT_EQ(framesPerSecond(2), 3 / 2.0) << "over the age of the stream";
        }
    }
    EXPECT_EQ(framesPerSecond(4999), 1);
    EXPECT_EQ(framesPerSecond(9999), 0);
    EXPECT_EQ(visitor.counters().taps, 5000U);
    const auto entries = visitor.timeline().entriesAfter(0);
    EXPECT_EQ(entries.size(), Timeline::kCapacity);
    EXPECT_EQ(entries.back()["seq"], visitor.timeline().lastSequence());
    EXPECT_EQ(visitor.timeline().entriesAfter(visitor.timeline().lastSequence() - 3).size(), 3U);
    EXPECT_EQ(visitor.lastFrame()->number, 5000U);
    EXPECT_EQ(observer.frames, 5000);
}

TEST(Visitor, RepeatsAWarningOnlyAfterAPause) {
    CountingObserver observer;
    Visitor visitor(1, "T", "S", kStart, observer);
    for (int i = 0; i < 25; ++i)
        visitor.warn("again", kStart + seconds(i));
    EXPECT_EQ(visitor.timeline().lastSequence(), 3U);
    EXPECT_EQ(visitor.counters().warnings, 25U);
}

TEST(Visitor, TellsWhyItsSessionIsOver) {
    CountingObserver observer;
    const auto stops = [](Visitor& visitor) { visitor.activity("ce", "", kStart); };
    const auto closes = [](Visitor& visitor) { visitor.ended(kStart); };
    const auto passes = [](std::chrono::minutes time) {
        return [time](Visitor& visitor) { visitor.expire(kStart + time); };
    };
    using Steps = std::vector<std::function<void(Visitor&)>>;
    const auto askToClose = [](Visitor& visitor) { visitor.queueAgentMessage({{"a", "c"}}, {}, kStart); };
    const auto comesBack = [](Visitor& visitor) {
        visitor.received({}, 0, Transport::Polling, kStart + std::chrono::minutes(5));
    };
    for (const auto& [steps, reason] : std::vector<std::pair<Steps, nlohmann::json>>{
             {{stops, closes}, "visitor"},
             {{closes, stops}, "visitor"},
             {{askToClose, closes}, "agent"},
             {{closes, passes(std::chrono::minutes(29))}, "background"},
             {{closes, passes(std::chrono::minutes(31))}, "away"},
             {{closes, [](Visitor& visitor) { visitor.continued(); }}, "continued"},
             {{closes, comesBack}, "background"},
             {{passes(std::chrono::minutes(2))}, "silent"},
             {{passes(std::chrono::minutes(2)), comesBack}, nullptr}}) {
        Visitor visitor(1, "T", "S", kStart, observer);
        visitor.connected("Page", Transport::Polling, kStart);
        for (const auto& step : steps)
            step(visitor);
        EXPECT_EQ(visitor.summary(kStart)["endReason"], reason);
        EXPECT_EQ(visitor.summary(kStart)["state"], reason.is_null() ? "live" : "ended") << reason;
    }
    Visitor unopened(1, "T", "S", kStart, observer);
    unopened.expire(kStart + std::chrono::minutes(2));
    EXPECT_EQ(unopened.summary(kStart)["endReason"], "unopened");
}

TEST(Visitor, AnswersCountForAQuestionThatWasPut) {
    CountingObserver observer;
    Visitor visitor(1, "T", "S", kStart, observer);
    visitor.connected("Page", Transport::Polling, kStart);
    const auto consent = [&] { return visitor.summary(kStart)["consent"]; };
    visitor.activity("ca", "", kStart);
    EXPECT_EQ(consent(), nullptr) << "every session begins with one";
    for (const auto& [type, state] : {std::pair{"ca", "accepted"}, {"cd", "declined"}}) {
        visitor.queueAgentMessage({{"co", {{"opt", true}}}}, {}, kStart);
        EXPECT_EQ(consent()["state"], "waiting");
        visitor.activity(type, "", kStart + seconds(1));
        EXPECT_EQ(consent()["state"], state);
    }
}

TEST(LineMeter, TellsTheRoundTripByGapsAndLossesByTheSessionsTime) {
    LineMeter line;
    EXPECT_EQ(line.toJson(kStart)["pingGap"], nullptr);
    const auto ping = [&](int at, int sent) {
        line.ping(kStart + seconds(at), 1000U * static_cast<unsigned>(sent));
    };
    for (int i = 0; i < 20; ++i)
        ping(i, i);
    EXPECT_EQ(line.toJson(kStart + seconds(20)),
              (nlohmann::json{{"pingGap", 1000}, {"longestGap", 1000}, {"missedPings", 0}}));
    // Three at a time, as they wait for a request that takes three seconds; then six are lost.
    for (int i = 20; i < 50; ++i)
        ping(22 + (i - 20) / 3 * 3, i);
    EXPECT_EQ(line.toJson(kStart + seconds(50))["pingGap"], 3000);
    EXPECT_EQ(line.toJson(kStart + seconds(50))["missedPings"], 0);
    ping(56, 56);
    const auto lossy = line.toJson(kStart + seconds(56));
    EXPECT_EQ(lossy["missedPings"], 5) << "one may be due to the app's whole seconds";
    EXPECT_EQ(lossy["longestGap"], 7000);
    EXPECT_EQ(line.toJson(kStart + seconds(80))["pingGap"], nullptr) << "what is long past tells nothing";
}

TEST(VisitorRegistry, ForgetsEndedThenSilentSessionsFirst) {
    CountingObserver observer;
    VisitorRegistry registry(observer, 3);
    const ProtoMessageList ping;
    for (const char* session : {"old-live", "live", "ended"}) {
        Visitor& visitor = registry.obtain("T", session, kStart);
        visitor.connected("", Transport::Polling, kStart);
        visitor.received(ping, 0, Transport::Polling, kStart);
    }
    registry.find("T", "live")->received(ping, 0, Transport::Polling, kStart + seconds(5));
    registry.find("T", "ended")->ended(kStart + seconds(9));

    registry.obtain("T", "never-streamed", kStart + seconds(10));
    EXPECT_EQ(observer.removed, std::set<std::string>{"ended"});
    registry.obtain("T", "flood", kStart + seconds(11));
    EXPECT_TRUE(observer.removed.contains("never-streamed")) << "a flood does not push out those who stream";
    registry.obtain("T", "flood", kStart + seconds(12))
        .received(ping, 0, Transport::Polling, kStart + seconds(12));
    registry.obtain("T", "next", kStart + seconds(13));
    EXPECT_TRUE(observer.removed.contains("old-live"));
    EXPECT_EQ(registry.find("T", "old-live"), nullptr);
    EXPECT_NE(registry.find("T", "live"), nullptr);
    EXPECT_EQ(registry.find("other tenant", "live"), nullptr);
}

}  // namespace
}  // namespace merovanta::devservice::test
