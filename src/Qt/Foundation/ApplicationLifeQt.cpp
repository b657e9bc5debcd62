#include "Qt/Foundation/ApplicationLifeQt.h"

#include <QtCore/QCoreApplication>
#include <algorithm>

namespace merovanta::qt {

namespace {

ApplicationLifeQt* theLife = nullptr;

}  // namespace

ApplicationLifeQt& ApplicationLifeQt::instance() {
    static const bool made = [] {
        // Never destroyed: the application may end after the static objects did.
        theLife = new ApplicationLifeQt();
        qAddPreRoutine(&ApplicationLifeQt::start);
        return true;
    }();
    static_cast<void>(made);
    return *theLife;
}

void ApplicationLifeQt::add(Observer& observer) {
    mObservers.push_back(&observer);
    if (mPhase == Phase::running) observer.applicationStarted();
}

void ApplicationLifeQt::remove(Observer& observer) {
    std::erase(mObservers, &observer);
}

void ApplicationLifeQt::start() {
    qAddPostRoutine(&ApplicationLifeQt::end);
    theLife->mPhase = Phase::running;
    const auto observers = theLife->mObservers;
    for (Observer* observer : observers)
        observer->applicationStarted();
}

void ApplicationLifeQt::end() {
    theLife->mPhase = Phase::ended;
    const auto observers = theLife->mObservers;
    std::for_each(observers.rbegin(), observers.rend(),
                  [](Observer* observer) { observer->applicationEnding(); });
}

}  // namespace merovanta::qt
