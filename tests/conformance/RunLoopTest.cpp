#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::ElementsAre;

class RunLoop : public ConformanceTest {};

TEST_F(RunLoop, MainQueueRunsLaterAndInOrder) {
    auto& queue = platform().mainQueue();
    std::vector<int> order;
    EXPECT_TRUE(isOnMain());
    queue.async([&] {
        EXPECT_TRUE(isOnMain());
        queue.async([&] { order.push_back(3); });
        order.push_back(1);
    });
    queue.async([&] { order.push_back(2); });
    EXPECT_THAT(order, ElementsAre()) << "never inside the call";
    ASSERT_TRUE(passUntil([&] { return order.size() == 3; }));
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(RunLoop, WorkQueueRunsInOrderBesideTheMainThread) {
    std::vector<int> worked;
    std::vector<int> delivered;
    bool sawMain = false;
    for (int index = 0; index < 100; ++index) {
        platform().workQueue().async([&, index] {
            sawMain |= isOnMain();
            worked.push_back(index);
            platform().mainQueue().async([&, index] { delivered.push_back(index); });
        });
    }
    ASSERT_TRUE(passUntil([&] { return delivered.size() == 100; }));
    EXPECT_FALSE(sawMain);
    EXPECT_EQ(worked.size(), 100);
    EXPECT_TRUE(std::is_sorted(worked.begin(), worked.end()));
    EXPECT_TRUE(std::is_sorted(delivered.begin(), delivered.end()));
}

TEST_F(RunLoop, TimersFireOnceOrAgainAndNeverEarly) {
    using std::chrono::nanoseconds;
    std::vector<nanoseconds> once;
    std::vector<nanoseconds> repeated;
    const auto start = harness->now();
    const auto single = platform().timers().schedule(20'500us, false, [&] {
        EXPECT_TRUE(isOnMain());
        once.push_back(harness->now() - start);
    });
    const auto repeating =
        platform().timers().schedule(10ms, true, [&] { repeated.push_back(harness->now() - start); });
    EXPECT_TRUE(once.empty() && repeated.empty());
    ASSERT_TRUE(passUntil([&] { return repeated.size() >= 5; }));
    ASSERT_EQ(once.size(), 1);
    EXPECT_GE(once[0], 20'500us);
    for (std::size_t index = 0; index < repeated.size(); ++index)
        EXPECT_GE(repeated[index], 10ms * (index + 1)) << index;
}

TEST_F(RunLoop, ATimerEndsWithItsHandle) {
    auto& timers = platform().timers();
    int cancelled = 0;
    int ticks = 0;
    auto never = timers.schedule(0ms, false, [&] { ++cancelled; });
    never.reset();
    // What the actions hold must outlive their own cancellation.
    std::unique_ptr<Timer> repeating;
    repeating = timers.schedule(1ms, true, [&, kept = std::make_shared<int>(1)] {
        if (ticks == 2) repeating.reset();
        ticks += *kept;
    });
    std::unique_ptr<Timer> single;
    single = timers.schedule(1ms, false, [&, kept = std::make_shared<int>(0)] {
        single.reset();
        cancelled += *kept;
    });
    int other = 0;
    const auto witness = timers.schedule(5ms, true, [&] { ++other; });
    ASSERT_TRUE(passUntil([&] { return ticks >= 3 && !single && other >= 5; }));
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(cancelled, 0);
}

TEST_F(RunLoop, ALateTimerSkipsWhatItMissed) {
    constexpr auto interval = 10ms;
    int ticks = 0;
    std::chrono::nanoseconds resumed{};
    const auto timer = platform().timers().schedule(interval, true, [&] {
        if (++ticks > 1) return;
        harness->stall(300ms);
        resumed = harness->now();
    });
    ASSERT_TRUE(passUntil([&] { return ticks >= 5; }));
    // One may be due at once, the others come at their intervals.
    EXPECT_GE(harness->now() - resumed, interval * 2);
}

TEST_F(RunLoop, TheClockGoesOnAndEveryRandomBitVaries) {
    const auto before = platform().clock().sinceEpoch();
    harness->pass(50ms);
    const auto passed = platform().clock().sinceEpoch() - before;
    EXPECT_GT(before, std::chrono::hours(24 * 365 * 50));
    EXPECT_GE(passed, 49ms) << "milliseconds are rounded";
    EXPECT_LT(passed, 1h);

    Random::result_type varied = 0;
    const auto first = platform().random()();
    for (int draw = 0; draw < 200; ++draw)
        varied |= first ^ platform().random()();
    EXPECT_EQ(varied, Random::max());
}

}  // namespace
}  // namespace merovanta::conformance
