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

namespace {

// After a refusal.
constexpr double secondsOfPeace = 30.0;

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

ConsentDialog::ConsentDialog(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                             std::shared_ptr<UIStrings> strings)
    : applicationConfig(std::move(wrapper)), uiStrings(std::move(strings)) {}

void ConsentDialog::ask() {
    assertMainThread();
    if (mQuestion && isCurrent(*mQuestion)) return;
    if (mPause) {
        Log::debug("The visitor has just declined");
        return;
    }
    mQuestion = std::make_shared<Question>(Question{.session = session(), .visitorId = visitorId()});
    uiStrings->load(applicationConfig->config.tenantId.value_or(""),
                    [weak = weak_from_this(),
                     question = std::weak_ptr(mQuestion)](const std::optional<StringError>& error) {
                        if (error) Log::warning("Cannot load texts: " + error->errorDescription());
                        ViewUtils::runOnMainQueue([weak, question] {
                            const auto self = weak.lock();
                            if (self && !question.expired()) self->present();
                        });
                    });
}

void ConsentDialog::sessionStarted() {
    if (mQuestion) mQuestion->session = session();
}

void ConsentDialog::present() {
    const auto title = uiStrings->text("ui.mobile.confirm.title");
    const auto accept = uiStrings->text("ui.confirm.accept");
    auto decline = uiStrings->text("ui.confirm.decline");
    if (!decline || isBlank(*decline)) decline = "Decline";
    const auto message = uiStrings->text("ui.mobile.confirm.message");
    const auto controller = ViewUtils::topViewController();
    // Without words for it, nobody can consent to anything.
    const bool isWorded =
        !isBlank(accept.value_or("")) && !isBlank(title.value_or("") + message.value_or(""));
    if (isWorded && controller) {
        mQuestion->alert =
            platform::current().alerts().present(*controller,
                                                 {.title = title.value_or(""),
                                                  .message = message.value_or(""),
                                                  .accept = accept.value_or(""),
                                                  .decline = decline},
                                                 [this](bool accepted) { answered(accepted); });
    }
    if (!mQuestion->alert) {
        Log::warning("Cannot ask for consent");
        mQuestion.reset();
    }
}

void ConsentDialog::pause() {
    mPause =
        platform::current().timers().schedule(seconds(secondsOfPeace), false, [this] { mPause.reset(); });
}

bool ConsentDialog::isSharing() {
    const auto current = session();
    return current && current->state() != Session::State::ended;
}

std::shared_ptr<Session> ConsentDialog::session() {
    const auto panoptra = Injection::resolve<Panoptra>();
    return panoptra ? panoptra->session() : nullptr;
}

std::optional<std::string> ConsentDialog::visitorId() const {
    const auto& visit = applicationConfig->config.visitConfig;
    return visit ? visit->visitorId : std::nullopt;
}

bool ConsentDialog::isCurrent(const Question& question) const {
    return question.session.lock() == session() && question.visitorId == visitorId();
}

void ConsentDialog::answered(bool accepted) {
    assertMainThread();
    const auto self = shared_from_this();
    const auto question = std::exchange(mQuestion, nullptr);
    if (!accepted) pause();
    if (!accepted || !session() || !isCurrent(*question)) return;
    if (auto& shared = applicationConfig->config.panoptraConfig) shared->optIn = true;
    if (const auto panoptra = Injection::resolve<Panoptra>()) panoptra->consentGiven();
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->refresh();
}

}  // namespace merovanta
