#include "Qt/Quick/CoBrowsingQuick.h"

#include <Merovanta/Merovanta.h>

#include "Qt/Quick/CallbackQuick.h"

namespace merovanta::quick {

CoBrowsingQuick::CoBrowsingQuick(QObject* parent) : QObject(parent) {}

void CoBrowsingQuick::start() {
    Merovanta::coBrowsing().start();
}

void CoBrowsingQuick::stop() {
    Merovanta::coBrowsing().stop();
}

void CoBrowsingQuick::startWith(const QJSValue& success, const QJSValue& failure) {
    bool isRefused = false;
    const auto onSuccess = CallbackQuick::of(*this, success, isRefused);
    if (isRefused) return;
    const auto onFailure = CallbackQuick::of(*this, failure, isRefused);
    if (isRefused) return;
    Merovanta::coBrowsing().startWith(
        [onSuccess] {
            if (onSuccess) (*onSuccess)({});
        },
        [onFailure](const std::string& error) {
            if (onFailure) (*onFailure)({errorValue(error)});
        });
}

}  // namespace merovanta::quick
