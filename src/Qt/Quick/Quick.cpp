#include <Merovanta/Merovanta.h>
#include <Merovanta/Quick.h>

#include <QtQml/qqml.h>
#include <memory>
#include <utility>

#include "Qt/Quick/AddChat.h"
#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/PlatformQuick.h"

namespace merovanta::quick {

namespace {

const std::shared_ptr<PlatformQuick>& thePlatform() {
    static const auto thePlatform = std::make_shared<PlatformQuick>();
    return thePlatform;
}

}  // namespace

void initialize() {
    static const bool initialized = [] {
        qmlRegisterTypesAndRevisions<MerovantaQuick, PanoptraQuick, ConfigurationQuick, PrivacyQuick>(
            "Merovanta", 1);
        qmlRegisterModule("Merovanta", 1, 0);
        platform::install(thePlatform());
        if (qEnvironmentVariableIntValue("MEROVANTA_PRIVACY_PREVIEW") != 0)
            Merovanta::privacy().setPreview(true);
        return true;
    }();
    static_cast<void>(initialized);
}

void addChat(std::unique_ptr<WebViewFactory> webViews,
             std::unique_ptr<DocumentPreviewFactory> documentPreviews) {
    thePlatform()->addChat(std::move(webViews), std::move(documentPreviews));
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
