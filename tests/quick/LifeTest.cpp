#include <gtest/gtest.h>

#include <QtCore/QProcess>

#include "EarlyBird.h"
#include "Scene.h"

using namespace merovanta;
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

}  // namespace
