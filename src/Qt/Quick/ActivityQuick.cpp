#include "Qt/Quick/ActivityQuick.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <algorithm>
#include <utility>

namespace merovanta::quick {

namespace {

bool canBeSeen(const QWindow* window) {
    return window->isVisible() && !window->windowStates().testFlag(Qt::WindowMinimized);
}

bool isAnyWindowSeen() {
    const auto windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), canBeSeen);
}

}  // namespace

ActivityQuick::Machine ActivityQuick::machineOf(const QString& platformName) {
    // Platforms that draw straight to a screen; and one that serves a remote viewer, who may come and go.
    static constexpr QStringView kiosks[] = {u"eglfs",    u"linuxfb",    u"vkkhrdisplay",
                                             u"directfb", u"minimalegl", u"vnc"};
    static constexpr QStringView handhelds[] = {u"android", u"ios"};
    const auto isNamed = [&](QStringView name) { return platformName == name; };
    if (std::any_of(std::begin(kiosks), std::end(kiosks), isNamed)) return Machine::kiosk;
    if (std::any_of(std::begin(handhelds), std::end(handhelds), isNamed)) return Machine::handheld;
    return Machine::desktop;
}

ActivityQuick::ActivityQuick() {
    qt::ApplicationLifeQt::instance().add(*this);
}

ActivityQuick::ActivityQuick(Machine machine) : mMachine(machine) {
    qt::ApplicationLifeQt::instance().add(*this);
}

ActivityQuick::~ActivityQuick() {
    qt::ApplicationLifeQt::instance().remove(*this);
}

void ActivityQuick::applicationStarted() {
    if (!mMachine) mMachine = machineOf(QGuiApplication::platformName());
    mIsActive = hasAttention();
    if (mMachine == Machine::kiosk) return;
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &ActivityQuick::update);
    // Later: the application object is still being made.
    if (mMachine == Machine::desktop)
        QMetaObject::invokeMethod(this, &ActivityQuick::watchDesktop, Qt::QueuedConnection);
}

void ActivityQuick::applicationEnding() {
    mLock.reset();
    qGuiApp->removeEventFilter(this);
    disconnect(qGuiApp, nullptr, this, nullptr);
}

void ActivityQuick::watchDesktop() {
    if (qGuiApp == nullptr) return;
    qGuiApp->installEventFilter(this);
    mLock = std::make_unique<qt::ScreenLockQt>();
    connect(mLock.get(), &qt::ScreenLockQt::changed, this, &ActivityQuick::update);
    update();
}

bool ActivityQuick::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::WindowStateChange:
            if (watched->isWindowType()) updateSoon();
            break;
        default:
            break;
    }
    return false;
}

void ActivityQuick::updateSoon() {
    // Not at once: a host that closes one window and then opens the next was there all the time.
    if (std::exchange(mIsUpdating, true)) return;
    QMetaObject::invokeMethod(this, &ActivityQuick::update, Qt::QueuedConnection);
}

void ActivityQuick::update() {
    mIsUpdating = false;
    // A call that was queued may come when the application ends.
    if (qGuiApp == nullptr) return;
    const bool isActive = hasAttention();
    if (std::exchange(mIsActive, isActive) == isActive) return;
    if (isActive) {
        Q_EMIT didBecomeActive();
    } else {
        Q_EMIT willResignActive();
    }
}

bool ActivityQuick::hasAttention() const {
    if (mMachine == Machine::kiosk) return true;
    const Qt::ApplicationState state = QGuiApplication::applicationState();
    if (mMachine == Machine::handheld) return state == Qt::ApplicationActive;
    const bool isPutAway = state == Qt::ApplicationHidden || state == Qt::ApplicationSuspended;
    return !isPutAway && !(mLock && mLock->isLocked()) && isAnyWindowSeen();
}

}  // namespace merovanta::quick
