#include "General/CoBrowsing/CoBrowsing.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

namespace {

void handleStartRequest() {
    Log::debug("Got SCB message");
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (!coBrowsing) {
        Log::error("Cannot get CoBrowsing instance");
        return;
    }
    coBrowsing->start([](const std::optional<StringError>& error, bool /*isStarted*/) {
        if (error) Log::error("Starting CoBrowsing failed: " + error->errorDescription());
    });
}

}  // namespace

CoBrowsing::CoBrowsing(std::shared_ptr<Panoptra> controller, std::shared_ptr<UIStrings> strings,
                       std::shared_ptr<ApplicationConfigWrapper> wrapper,
                       std::shared_ptr<Communication> registry)
    : panoptra(std::move(controller)),
      uiStrings(std::move(strings)),
      applicationConfig(std::move(wrapper)),
      communication(std::move(registry)) {}

void CoBrowsing::startPolling() {
    Log::debug("Start polling for SCB messages");
    communication->registerClient({.id = startCoBrowsingId,
                                   .channel = CommunicationChannel::SCB,
                                   .rate = startCoBrowsingPollRate,
                                   .callback = [](const std::string&) { handleStartRequest(); }});
}

void CoBrowsing::start(Completion completion) {
    assertMainThread();
    if (isStarted) {
        completion(StringError("CoBrowsing is already started"), false);
        return;
    }
    isStarted = true;
    ++mRun;
    uiStrings->load(applicationConfig->config.tenantId.value_or(""),
                    [weak = weak_from_this(), run = mRun,
                     completion = std::move(completion)](const std::optional<StringError>& error) {
                        if (error) Log::warning("Cannot load texts: " + error->errorDescription());
                        ViewUtils::runOnMainQueue([weak, run, completion] {
                            const auto self = weak.lock();
                            if (!self) return;
                            if (self->mRun == run) {
                                self->showWidget(completion);
                            } else {
                                completion(StringError("CoBrowsing was stopped while it started"), false);
                            }
                        });
                    });
}

void CoBrowsing::showWidget(const Completion& completion) {
    if (const auto error = createWidget()) {
        isStarted = false;
        Log::error("Starting UI failed with error: " + error->errorDescription());
        completion(error, false);
        return;
    }
    setText(textOr(connectingString, "CONNECTING"));
    view->tenantId = applicationConfig->config.tenantId.value_or("");
    startSession(completion);
}

std::optional<StringError> CoBrowsing::createWidget() {
    const auto parent = ViewUtils::rootView();
    if (!parent) return StringError("Cannot find view of controller");
    if (!ViewUtils::subviewsOfClass(*parent, "DefaultUIView").empty())
        return StringError("UI is already shown");
    view = DefaultUIView::create(*parent);
    if (!view) return StringError("Widget cannot be created");
    return std::nullopt;
}

void CoBrowsing::startSession(const Completion& completion) {
    const auto& visit = applicationConfig->config.visitConfig;
    panoptra->start(
        /*force=*/true, visit ? visit->sessionId : std::nullopt,
        [weak = weak_from_this(), run = mRun, completion](const std::optional<StringError>& error) {
            const auto self = weak.lock();
            if (!self) return;
            if (error) {
                Log::error("Starting Panoptra failed: " + error->errorDescription());
                if (self->mRun == run) {
                    self->isStarted = false;
                    self->setText(self->textOr(self->errorString, "ERROR"));
                }
            } else if (self->mRun == run) {
                self->sessionStarted();
            }
            completion(error, !error);
        });
}

void CoBrowsing::sessionStarted() {
    mIsSessionRunning = true;
    const auto& session = applicationConfig->config.panoptraConfig;
    setText(session ? session->shareId.value_or("") : "");
}

void CoBrowsing::hide() {
    assertMainThread();
    removeWidget();
    panoptra->stop();
    isStarted = false;
}

void CoBrowsing::sessionStopped() {
    assertMainThread();
    removeWidget();
    isStarted = false;
}

void CoBrowsing::sessionRestarts() {
    mIsSessionRunning = false;
    setText(textOr(connectingString, "CONNECTING"));
}

void CoBrowsing::sessionRestarted(bool isRunning) {
    if (!isStarted) return;
    if (isRunning) {
        sessionStarted();
    } else {
        sessionStopped();
    }
}

void CoBrowsing::setChatActivated(bool isActivated) {
    assertMainThread();
    if (view) view->setChatActivated(isActivated);
}

void CoBrowsing::refresh() {
    if (mIsSessionRunning) sessionStarted();
}

void CoBrowsing::setText(const std::string& text) {
    ViewUtils::runOnMainQueue([weak = std::weak_ptr(view), text] {
        if (const auto widget = weak.lock()) widget->setText(text);
    });
}

void CoBrowsing::removeWidget() {
    ++mRun;
    mIsSessionRunning = false;
    ViewUtils::runOnMainQueue([widget = std::exchange(view, nullptr)] {
        if (widget) widget->removeFromSuperview();
    });
}

std::string CoBrowsing::textOr(const char* key, const char* fallback) const {
    return uiStrings->text(key).value_or(fallback);
}

}  // namespace merovanta
