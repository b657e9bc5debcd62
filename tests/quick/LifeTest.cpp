#include <gmock/gmock.h>

#include <QtCore/QProcess>
#include <thread>

#include "EarlyBird.h"
#include "Scene.h"

using namespace merovanta;
using merovanta::platform::current;
using merovanta::test::eventually;

namespace {

TEST(Life, WhatWasAskedBeforeTheApplicationHappensInIt) {
    const auto& bird = merovanta::test::earlyBird();
    EXPECT_TRUE(eventually([&] { return bird.task && bird.timer && bird.completion; }));
}

TEST(Life, TheEndIsQuiet) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--end-in-the-middle"});
    ASSERT_TRUE(process.waitForFinished(30000));
    const QByteArray errors = process.readAllStandardError();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << errors.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << errors.toStdString();
    for (const auto* complaint : {"QThread", "QObject", "QTimer", "QSocketNotifier", "Sanitizer"}) {
        EXPECT_FALSE(errors.contains(complaint)) << errors.toStdString();
    }
}

TEST(MainQueue, RunsLaterInOrderOnTheMainThread) {
    std::vector<int> order;
    std::thread([&] {
        EXPECT_FALSE(current().mainQueue().isCurrent());
        current().mainQueue().async([&] {
            EXPECT_TRUE(current().mainQueue().isCurrent());
            order.push_back(1);
            current().mainQueue().async([&] { order.push_back(3); });
        });
        current().mainQueue().async([&] { order.push_back(2); });
    }).join();
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(eventually([&] { return order.size() == 3; }));
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 3));
}

TEST(WorkQueue, RunsInOrderBesideTheMainThread) {
    std::vector<int> order;
    std::atomic<bool> done{false};
    for (int index = 0; index < 100; ++index) {
        current().workQueue().async([&, index] {
            EXPECT_FALSE(current().mainQueue().isCurrent());
            order.push_back(index);
            done = index == 99;
        });
    }
    ASSERT_TRUE(eventually([&] { return done.load(); }));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_EQ(order.size(), 100U);
}

TEST(Timers, AreNeverEarlyAndStopWithTheirHandle) {
    QElapsedTimer clock;
    clock.start();
    qint64 fired = 0;
    auto once = current().timers().schedule(std::chrono::microseconds(20500), false,
                                            [&] { fired = clock.nsecsElapsed(); });
    int ticks = 0;
    std::unique_ptr<Timer> repeating;
    repeating = current().timers().schedule(std::chrono::milliseconds(5), true, [&] {
        // What the action holds must outlive its own cancellation.
        if (++ticks == 3) repeating.reset();
    });
    int cancelled = 0;
    auto never = current().timers().schedule(std::chrono::milliseconds(1), false, [&] { ++cancelled; });
    never.reset();
    EXPECT_TRUE(eventually([&] { return fired != 0 && ticks == 3; }));
    QTest::qWait(30);
    EXPECT_GE(fired, 20500000);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(cancelled, 0);
}

}  // namespace
