#include <gtest/gtest.h>

#include <chrono>
#include <set>

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
