#include "Qt/Quick/ActivityQuick.h"

#include <gmock/gmock.h>

#include <QtCore/QProcess>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
// What a platform tells; the public interface cannot.
#include <qpa/qwindowsysteminterface.h>

#include "Scene.h"

using merovanta::quick::ActivityQuick;
using merovanta::test::eventually;
using testing::ElementsAre;
using testing::IsEmpty;
using Machine = ActivityQuick::Machine;

namespace {

/// One kind of machine, with one window that can be seen.
class Activity : public testing::Test {
 protected:
    explicit Activity(Machine machine) : mActivity(machine) {
        QObject::connect(&mActivity, &ActivityQuick::willResignActive, [this] { seen.push_back("resign"); });
        QObject::connect(&mActivity, &ActivityQuick::didBecomeActive, [this] { seen.push_back("active"); });
        window.resize(200, 100);
        window.show();
        window.requestActivate();
        if (!QTest::qWaitForWindowActive(&window)) qFatal("The window does not get the focus");
        QTest::qWait(50);
        seen.clear();
    }

    /// What is told of what happens next.
    std::vector<std::string> afterwards(const std::function<void()>& happens) {
        seen.clear();
        happens();
        QTest::qWait(100);
        return seen;
    }

    std::vector<std::string> seen;
    QWindow window;
    ActivityQuick mActivity;
};

template <Machine machine>
class ActivityOf : public Activity {
 protected:
    ActivityOf() : Activity(machine) {}
};
using ActivityOnADesktop = ActivityOf<Machine::desktop>;
using ActivityInTheHand = ActivityOf<Machine::handheld>;
using ActivityOfAKiosk = ActivityOf<Machine::kiosk>;

TEST_F(ActivityOnADesktop, LastsAsLongAsOneWindowCanBeSeen) {
    EXPECT_TRUE(mActivity.isActive());
    QWindow second;
    EXPECT_THAT(afterwards([&] { second.show(); }), IsEmpty());
    EXPECT_THAT(afterwards([&] { window.hide(); }), IsEmpty());
    EXPECT_THAT(afterwards([&] { second.hide(); }), ElementsAre("resign"));
    EXPECT_FALSE(mActivity.isActive());
    EXPECT_THAT(afterwards([&] { window.show(); }), ElementsAre("active"));
    EXPECT_THAT(afterwards([&] { window.showMinimized(); }), ElementsAre("resign"));
    EXPECT_THAT(afterwards([&] { window.showNormal(); }), ElementsAre("active"));
    EXPECT_THAT(afterwards([&] { window.destroy(); }), ElementsAre("resign"));
    EXPECT_FALSE(mActivity.isActive());
    EXPECT_THAT(afterwards([&] { window.show(); }), ElementsAre("active"));
    EXPECT_THAT(afterwards([&] { window.hide(), second.show(); }), IsEmpty()) << "one after the other";
}

TEST_F(ActivityInTheHand, IsWhatTheSystemTells) {
    const auto tell = [](Qt::ApplicationState state) {
        QWindowSystemInterface::handleApplicationStateChanged(state, /*forcePropagate=*/true);
    };
    EXPECT_TRUE(mActivity.isActive());
    EXPECT_THAT(afterwards([&] { tell(Qt::ApplicationInactive); }), ElementsAre("resign"));
    EXPECT_THAT(afterwards([&] { tell(Qt::ApplicationSuspended); }), IsEmpty());
    EXPECT_THAT(afterwards([&] { tell(Qt::ApplicationActive); }), ElementsAre("active"));
}

TEST_F(ActivityOfAKiosk, NeverEnds) {
    EXPECT_THAT(afterwards([&] { window.hide(); }), IsEmpty());
    EXPECT_TRUE(mActivity.isActive());
}

TEST(ActivityKinds, FollowThePlatform) {
    for (const auto* kiosk : {"eglfs", "linuxfb", "vkkhrdisplay", "vnc"})
        EXPECT_EQ(ActivityQuick::machineOf(kiosk), Machine::kiosk) << kiosk;
    for (const auto* handheld : {"android", "ios"})
        EXPECT_EQ(ActivityQuick::machineOf(handheld), Machine::handheld) << handheld;
    for (const auto* desktop : {"xcb", "wayland", "windows", "cocoa", "offscreen"})
        EXPECT_EQ(ActivityQuick::machineOf(desktop), Machine::desktop) << desktop;
}

/// With the session's bus, on which the test plays the screen saver.
class ActivityWithABus : public ActivityOnADesktop {
 protected:
    static void tell(bool isLocked) {
        auto signal = QDBusMessage::createSignal("/org/freedesktop/ScreenSaver",
                                                 "org.freedesktop.ScreenSaver", "ActiveChanged");
        signal << isLocked;
        ASSERT_TRUE(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "screen saver").send(signal));
    }
};

TEST_F(ActivityWithABus, EndsWithALockedScreen) {
    EXPECT_THAT(afterwards([] { tell(true); }), ElementsAre("resign"));
    EXPECT_THAT(afterwards([&] { window.hide(); }), IsEmpty());
    EXPECT_THAT(afterwards([] { tell(false); }), IsEmpty()) << "nothing to be seen yet";
    EXPECT_THAT(afterwards([&] { window.show(); }), ElementsAre("active"));
}

/// With a window manager, and the windows of others.
class ActivityAmongWindows : public ActivityOnADesktop {
 protected:
    /// As the user does it.
    void manage(const QString& command) {
        QProcess process;
        process.start("xdotool", {command, QString::number(window.winId())});
        ASSERT_TRUE(process.waitForFinished() && process.exitCode() == 0);
    }
};

TEST_F(ActivityAmongWindows, IsNotTouchedByTheWindowOfAnother) {
    QProcess other;
    const auto told = afterwards([&] {
        other.start(QCoreApplication::applicationFilePath(), {"--show-a-window"});
        ASSERT_TRUE(eventually([] { return QGuiApplication::applicationState() != Qt::ApplicationActive; }));
        QTest::qWait(300);
    });
    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(mActivity.isActive());
    other.kill();
    other.waitForFinished();
}

TEST_F(ActivityAmongWindows, EndsWithMinimisingAndComesBackWithRestoring) {
    manage("windowminimize");
    ASSERT_TRUE(eventually([&] { return !mActivity.isActive(); }));
    manage("windowactivate");
    ASSERT_TRUE(eventually([&] { return mActivity.isActive(); }));
    EXPECT_THAT(seen, ElementsAre("resign", "active"));
}

}  // namespace
