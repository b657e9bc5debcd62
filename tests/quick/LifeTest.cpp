#include <gtest/gtest.h>

#include <QtCore/QProcess>

#include "EarlyBird.h"
#include "Scene.h"

using namespace merovanta;
using merovanta::platform::current;
using merovanta::test::eventually;

namespace {

TEST(Life, WhatWasAskedBeforeTheApplicationHappensInIt) {
    const auto& bird = merovanta::test::earlyBird();
    EXPECT_TRUE(eventually([&] { return bird.task && bird.timer && bird.completion && bird.socketError; }));
}

TEST(Life, TheEndIsQuiet) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {"--end-in-the-middle"});
    ASSERT_TRUE(process.waitForFinished(30000));
    const QByteArray errors = process.readAllStandardError();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << errors.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << errors.toStdString();
    for (const auto* complaint : {"QThread", "QObject::", "QTimer", "QSocketNotifier", "Sanitizer"}) {
        EXPECT_FALSE(errors.contains(complaint)) << errors.toStdString();
    }
}

TEST(Timers, KeepMicroseconds) {
    QElapsedTimer clock;
    clock.start();
    qint64 fired = 0;
    const auto timer = current().timers().schedule(std::chrono::microseconds(20500), false,
                                                   [&] { fired = clock.nsecsElapsed(); });
    EXPECT_TRUE(eventually([&] { return fired != 0; }));
    EXPECT_GE(fired, 20500000);
}

}  // namespace
