#include <Merovanta/Merovanta.h>
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
        qmlRegisterTypesAndRevisions<MerovantaQuick, PanoptraQuick, ConfigurationQuick, PrivacyQuick>(
            "Merovanta", 1);
        qmlRegisterModule("Merovanta", 1, 0);
        platform::install(std::make_shared<PlatformQuick>());
        if (qEnvironmentVariableIntValue("MEROVANTA_PRIVACY_PREVIEW") != 0)
            Merovanta::privacy().setPreview(true);
        return true;
    }();
    static_cast<void>(initialized);
}

void setTag(QObject& object, int tag) {
    if (auto* const attached = MerovantaQuick::attachedTo(object)) attached->setTag(tag);
}

void setMasked(QObject& object, std::optional<bool> masked) {
    if (auto* const attached = MerovantaQuick::attachedTo(object)) attached->mark(masked);
}

void setTapsPrivate(QObject& object, bool tapsPrivate) {
    if (auto* const attached = MerovantaQuick::attachedTo(object)) attached->setTapsPrivate(tapsPrivate);
}

}  // namespace merovanta::quick
