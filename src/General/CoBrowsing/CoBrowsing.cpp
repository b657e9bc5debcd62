#include "General/CoBrowsing/CoBrowsing.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Session.h"
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
    coBrowsing->invited();
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

void CoBrowsing::invited() {
    // One that could not be opened again after the background makes room.
    const auto& session = panoptra->session();
    if (session && session->state() == Session::State::ended) panoptra->stop(SessionEnd::failure);
    if (!isStarted) removeWidget();
    start(SessionStarter::invitation, [](const std::optional<StringError>& error, bool /*isStarted*/) {
        if (error) Log::error("Starting CoBrowsing failed: " + error->errorDescription());
    });
}

void CoBrowsing::start(SessionStarter by, Completion completion) {
    assertMainThread();
    if (isStarted) {
        completion(StringError("CoBrowsing is already started"), false);
        return;
    }
    isStarted = true;
    mInvitation = std::make_shared<Invitation>(Invitation{.by = by, .completion = std::move(completion)});
    const std::weak_ptr<Invitation> invitation = mInvitation;
    uiStrings->load(applicationConfig->config.tenantId.value_or(""),
                    [weak = weak_from_this(), invitation](const std::optional<StringError>& error) {
                        if (error) Log::warning("Cannot load texts: " + error->errorDescription());
                        ViewUtils::runOnMainQueue([weak, invitation] {
                            const auto self = weak.lock();
                            if (self && !invitation.expired()) self->showWidget();
                        });
                    });
}

void CoBrowsing::showWidget() {
    if (const auto error = createWidget()) {
        isStarted = false;
        Log::error("Starting UI failed with error: " + error->errorDescription());
        std::exchange(mInvitation, nullptr)->completion(error, false);
        return;
    }
    setText(textOr(connectingString, "CONNECTING"));
    view->tenantId = applicationConfig->config.tenantId.value_or("");
    startSession();
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

void CoBrowsing::startSession() {
    const auto& visit = applicationConfig->config.visitConfig;
    panoptra->start(
        /*force=*/true, visit ? visit->sessionId : std::nullopt, mInvitation->by,
        [weak = weak_from_this(), invitation = std::weak_ptr(mInvitation),
         completion =
             std::exchange(mInvitation->completion, nullptr)](const std::optional<StringError>& error) {
            const auto self = weak.lock();
            const bool isCurrent = self && !invitation.expired();
            if (error) Log::error("Starting Panoptra failed: " + error->errorDescription());
            if (isCurrent && error) self->startFailed();
            if (isCurrent && !error) self->sessionStarted();
            // One that the service leaves alone has lost its widget by now.
            completion(error, isCurrent && !error);
        });
}

/// The widget stays, to say so.
void CoBrowsing::startFailed() {
    mInvitation.reset();
    isStarted = false;
    setText(textOr(errorString, "ERROR"));
}

void CoBrowsing::sessionStarted() {
    mInvitation->hasSession = true;
    mInvitation->isConnected = true;
    const auto& session = applicationConfig->config.panoptraConfig;
    setText(session ? session->shareId.value_or("") : "");
}

void CoBrowsing::hide(SessionEnd reason) {
    assertMainThread();
    const SessionObservers::Scope scope(panoptra->observers());
    removeWidget();
    panoptra->stop(reason);
    isStarted = false;
}

bool CoBrowsing::keepWidgetOn(const View& screen) {
    assertMainThread();
    return !mInvitation || !view || view->isOn(screen) || view->moveTo(screen);
}

void CoBrowsing::sessionStopped() {
    assertMainThread();
    removeWidget();
    isStarted = false;
}

void CoBrowsing::startOvertaken() {
    assertMainThread();
    if (isStarted) sessionStopped();
}

void CoBrowsing::sessionReconnects() {
    // The widget of a start that failed says so until it is closed, whatever else runs.
    if (!hasSession()) return;
    mInvitation->isConnected = false;
    setText(textOr(connectingString, "CONNECTING"));
}

void CoBrowsing::sessionReconnected() {
    if (hasSession()) sessionStarted();
}

void CoBrowsing::sessionIsLost() {
    if (!hasSession()) return;
    mInvitation->isConnected = false;
    setText(textOr(errorString, "ERROR"));
}

void CoBrowsing::setChatActivated(bool isActivated) {
    assertMainThread();
    if (view) view->setChatActivated(isActivated);
}

void CoBrowsing::refresh() {
    if (mInvitation && mInvitation->isConnected) sessionStarted();
}

void CoBrowsing::setText(const std::string& text) {
    ViewUtils::runOnMainQueue([weak = std::weak_ptr(view), text] {
        if (const auto widget = weak.lock()) widget->setText(text);
    });
}

void CoBrowsing::removeWidget() {
    const auto invitation = std::exchange(mInvitation, nullptr);
    ViewUtils::runOnMainQueue(
        [widget = std::exchange(view, nullptr), completion = invitation ? invitation->completion : nullptr] {
            if (widget) widget->removeFromSuperview();
            if (completion) completion(StringError("CoBrowsing was stopped while it started"), false);
        });
}

std::string CoBrowsing::textOr(const char* key, const char* fallback) const {
    return uiStrings->text(key).value_or(fallback);
}

}  // namespace merovanta
