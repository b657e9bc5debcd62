#include "Qt/Foundation/LimitedProcessQt.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <thread>

using merovanta::qt::LimitedProcessQt;

namespace {

std::string run(const char* script) {
    const std::atomic<bool> cancelled = false;
    return LimitedProcessQt::run("sh", {"-c", script}, 1000, cancelled).toStdString();
}

TEST(LimitedProcess, HasLimitsAndGivesNothingBeyondThem) {
    EXPECT_EQ(run("ulimit -v; ulimit -t; ulimit -c; echo no >&2"), "1048576\n10\n0\n");
    EXPECT_EQ(run("echo early; sleep 0.1; echo late"), "early\nlate\n");
    EXPECT_EQ(run("echo partly; exit 1"), "");
    EXPECT_EQ(run("echo partly; kill -9 $$"), "");
    EXPECT_EQ(run("while :; do echo endless; done"), "");
    const std::atomic<bool> cancelled = false;
    EXPECT_TRUE(LimitedProcessQt::run("/no/program", {}, 1000, cancelled).isEmpty());
}

TEST(LimitedProcess, EndsOnceCancelled) {
    QElapsedTimer clock;
    clock.start();
    std::atomic<bool> cancelled = false;
    QByteArray output = "unset";
    std::thread waiting([&] { output = LimitedProcessQt::run("sleep", {"600"}, 1000, cancelled); });
    cancelled = true;
    waiting.join();
    EXPECT_TRUE(output.isEmpty());
    EXPECT_LT(clock.elapsed(), 8000) << "the time limit has ended it";
}

}  // namespace
