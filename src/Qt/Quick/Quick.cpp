#include <Merovanta/Quick.h>

#include <QtQml/qqml.h>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#include <memory>

#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/PlatformQuick.h"

namespace merovanta::quick {

void initialize() {
    static const bool initialized = [] {
        QtWebEngineQuick::initialize();
        qmlRegisterTypesAndRevisions<MerovantaQuick, PanoptraQuick, ConfigurationQuick>("Merovanta", 1);
        qmlRegisterModule("Merovanta", 1, 0);
        platform::install(std::make_shared<PlatformQuick>());
        return true;
    }();
    static_cast<void>(initialized);
}

}  // namespace merovanta::quick
