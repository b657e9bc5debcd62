#include "Qt/Quick/ActivityQuick.h"

#include <QtGui/QGuiApplication>
#include <utility>

namespace merovanta::quick {

ActivityQuick::ActivityQuick() {
    qt::ApplicationLifeQt::instance().add(*this);
}

ActivityQuick::~ActivityQuick() {
    qt::ApplicationLifeQt::instance().remove(*this);
}

void ActivityQuick::applicationStarted() {
    mIsActive = QGuiApplication::applicationState() == Qt::ApplicationActive;
    mConnection = connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &ActivityQuick::change);
}

void ActivityQuick::applicationEnding() {
    disconnect(mConnection);
}

void ActivityQuick::change(Qt::ApplicationState state) {
    const bool isActive = state == Qt::ApplicationActive;
    if (std::exchange(mIsActive, isActive) == isActive) return;
    if (isActive) {
        Q_EMIT didBecomeActive();
    } else {
        Q_EMIT willResignActive();
    }
}

}  // namespace merovanta::quick
