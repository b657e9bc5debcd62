#include "Qt/Quick/CoBrowsingQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

CoBrowsingQuick::CoBrowsingQuick(QObject* parent) : QObject(parent) {}

void CoBrowsingQuick::start() {
    Merovanta::coBrowsing().start();
}

void CoBrowsingQuick::stop() {
    Merovanta::coBrowsing().stop();
}

}  // namespace merovanta::quick
