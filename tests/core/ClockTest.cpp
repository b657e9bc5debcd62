#include <gmock/gmock.h>

#include "General/Panoptra/Panoptra.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

class ClockTest : public LibraryTest {
 protected:
    /// The system's clock is corrected.
    void setClock(std::chrono::milliseconds by) { platform->clock().start += by; }

    /// What the calendar shows at the last message sent, in seconds.
    [[nodiscard]] double lastMessage() {
        const auto offset = static_cast<double>(*config().panoptraConfig->startTime);
        return (offset + static_cast<double>(service.messages().back().time())) / 1000;
    }

    /// What the system's clock shows now, in seconds.
    [[nodiscard]] double system() const {
        return std::chrono::duration<double>(platform->clock().start + platform->time->now()).count();
    }
};

TEST_F(ClockTest, FollowsTheSystemForwardAndCountsOnWhenItIsPutBack) {
    startSession();
    setClock(90min);
    advance(2s);
    EXPECT_NEAR(lastMessage(), system(), 2);

    setClock(-1h);
    for (int i = 0; i < 5; ++i) {
        const auto before = lastMessage();
        advance(10s);
        EXPECT_NEAR(lastMessage(), before + 10, 1.1) << "neither backwards nor at rest";
    }
    EXPECT_GT(lastMessage(), system() + 3500);

    // Once the system has caught up, it is followed again.
    setClock(2h);
    advance(2s);
    EXPECT_NEAR(lastMessage(), system(), 2);
}

TEST_F(ClockTest, EachSessionBeginsWithTheSystemsTime) {
    startSession();
    const auto first = config().panoptraConfig->startTime;
    Merovanta::panoptra().stop();
    setClock(-24h);
    startSession();
    EXPECT_LT(*config().panoptraConfig->startTime, *first - 80'000'000);
    advance(5s);
    EXPECT_NEAR(lastMessage(), system(), 2);
    EXPECT_EQ(service.messages().back().time(), 5000);
}

}  // namespace
}  // namespace merovanta::testing
