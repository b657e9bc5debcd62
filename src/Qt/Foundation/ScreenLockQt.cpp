#include "Qt/Foundation/ScreenLockQt.h"

#include <QtCore/QFile>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <utility>

namespace merovanta::qt {

namespace {

/// Asking for a bus where there is none may start one.
bool hasBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

}  // namespace

ScreenLockQt::ScreenLockQt() {
    if (!hasBus()) return;
    for (const auto* vendor : {"freedesktop", "gnome", "cinnamon", "mate", "xfce"})
        watch(QStringLiteral("org.%1.ScreenSaver").arg(QLatin1String(vendor)));
}

void ScreenLockQt::watch(const QString& screenSaver) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(QString(), QString(), screenSaver, QStringLiteral("ActiveChanged"), this,
                SLOT(setLocked(bool)));
    const QString path = u'/' + QString(screenSaver).replace(u'.', u'/');
    auto question =
        QDBusMessage::createMethodCall(screenSaver, path, screenSaver, QStringLiteral("GetActive"));
    // A screen saver that does not run is not to be started by the question.
    question.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<bool> isActive = *answer;
        // Only a "yes" says more than was assumed, or told by another, so far.
        if (isActive.isValid() && isActive.value()) setLocked(true);
        answer->deleteLater();
    });
}

void ScreenLockQt::setLocked(bool isLocked) {
    if (std::exchange(mIsLocked, isLocked) != isLocked) Q_EMIT changed();
}

}  // namespace merovanta::qt
