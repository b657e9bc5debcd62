#include "General/Panoptra/Network/Message/Bidirectional/ConsentDialog.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

ConsentDialog::ConsentDialog(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                             std::shared_ptr<UIStrings> strings)
    : applicationConfig(std::move(wrapper)), uiStrings(std::move(strings)) {}

void ConsentDialog::ask() {
    assertMainThread();
    if (mIsAsking && mAsked == share()) return;
    finish();
    mIsAsking = true;
    mAsked = share();
    uiStrings->load(
        applicationConfig->config.tenantId.value_or(""),
        [weak = weak_from_this(), question = ++mQuestion](const std::optional<StringError>& error) {
            if (error) Log::warning("Cannot load texts: " + error->errorDescription());
            ViewUtils::runOnMainQueue([weak, question] {
                const auto self = weak.lock();
                if (self && self->mQuestion == question) self->present();
            });
        });
}

void ConsentDialog::sessionStarted() {
    if (mIsAsking) mAsked = share();
}

void ConsentDialog::present() {
    const auto title = uiStrings->text("ui.mobile.confirm.title");
    const auto accept = uiStrings->text("ui.confirm.accept");
    const auto decline = uiStrings->text("ui.confirm.decline");
    const auto message = uiStrings->text("ui.mobile.confirm.message");
    const auto controller = ViewUtils::topViewController();
    // Without words for it, nobody can consent to anything.
    if (accept && (title || message) && controller) {
        mAlert = platform::current().alerts().present(*controller,
                                                      {.title = title.value_or(""),
                                                       .message = message.value_or(""),
                                                       .accept = *accept,
                                                       .decline = decline},
                                                      [this](bool accepted) { answered(accepted); });
    }
    if (!mAlert) {
        Log::warning("Cannot ask for consent");
        finish();
    }
}

void ConsentDialog::finish() {
    mIsAsking = false;
    mAlert.reset();
}

ConsentDialog::Share ConsentDialog::share() const {
    const ApplicationConfig& config = applicationConfig->config;
    return {config.panoptraConfig ? config.panoptraConfig->shareId : std::nullopt,
            config.visitConfig ? config.visitConfig->visitorId : std::nullopt};
}

bool ConsentDialog::isStillAsked() const {
    const auto panoptra = Injection::resolve<Panoptra>();
    return panoptra && panoptra->isRunning() && share() == mAsked;
}

void ConsentDialog::answered(bool accepted) {
    assertMainThread();
    const auto self = shared_from_this();
    finish();
    if (!accepted || !isStillAsked()) return;
    if (auto& session = applicationConfig->config.panoptraConfig) session->optIn = true;
    if (const auto panoptra = Injection::resolve<Panoptra>()) panoptra->consentGiven();
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->refresh();
}

}  // namespace merovanta
