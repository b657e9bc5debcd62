#include "General/Panoptra/Panoptra.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr double secondsToClosing = 5.0;

/// The restarts that waited are one: all hear of its outcome.
Panoptra::Completion toAll(std::vector<Panoptra::Completion> completions) {
    return [completions = std::move(completions)](const std::optional<StringError>& error) {
        for (const auto& completion : completions)
            completion(error);
    };
}

}  // namespace

Panoptra::Panoptra(std::shared_ptr<InitSender> init, std::shared_ptr<MessageSenderManager> senders,
                   std::shared_ptr<ViewMonitor> monitor, std::shared_ptr<ApplicationConfigWrapper> wrapper,
                   std::shared_ptr<NetworkManager> network)
    : initSender(std::move(init)),
      messageSenderManager(std::move(senders)),
      viewMonitor(std::move(monitor)),
      applicationConfig(std::move(wrapper)),
      networkManager(std::move(network)) {}

void Panoptra::start(bool force, const std::optional<std::string>& sessionId, Completion completion) {
    assertMainThread();
    if (mSession) {
        completion(StringError("Panoptra is already started"));
        return;
    }
    begin(sessionId, {.force = force, .completion = std::move(completion)});
}

void Panoptra::begin(const std::optional<std::string>& sessionId, Session::Order order) {
    Log::debug("Start");
    messageSenderManager->xhrSender->finishLastRound();
    auto& shared = applicationConfig->config.panoptraConfig;
    if (!sessionId && shared) shared->optIn = false;
    applicationConfig->renewVisit(sessionId);
    if (shared) shared->resetSession();
    networkManager->monitoringSender->logCoBrowsingAccept(MonitoringSender::logged("acceptance"));
    const auto session =
        std::make_shared<Session>(Session::Parts{initSender, messageSenderManager, viewMonitor,
                                                 applicationConfig, networkManager, mMessageSender},
                                  std::move(order), delegate());
    mSession = session;
    if (!closingIsSetup) observeApplicationState();
    session->start();
    // Of an application that is away already nobody will say so again.
    if (!platform::current().application().isActive() && !backgroundTimeoutTimer) willResignActive();
}

Session::Delegate Panoptra::delegate() {
    return {.changed =
                [weak = weak_from_this()](Session& session, const Session::Change& change) {
                    if (const auto self = weak.lock()) self->sessionChanged(session, change);
                },
            .senderSelected =
                [weak = weak_from_this()](const std::shared_ptr<MessageSender>& sender) {
                    if (const auto self = weak.lock()) self->mMessageSender = sender;
                },
            .restartsAreDue =
                [weak = weak_from_this()](std::vector<Completion> completions) {
                    if (const auto self = weak.lock()) self->restart(toAll(std::move(completions)));
                }};
}

void Panoptra::sessionChanged(const Session& session, const Session::Change& change) {
    using Reason = Session::Reason;
    const bool isStarted = change.state == Session::State::sharing && change.reason == Reason::asked;
    const bool isOver = change.reason == Reason::startFailed || change.reason == Reason::ignored;
    if (isOver && mSession.get() == &session) mSession.reset();
    // Resolved at the moment of use: it is itself built from this controller.
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) {
        if (session.isRestart() && (isStarted || isOver)) coBrowsing->sessionRestarted(isStarted);
        if (change.reason == Reason::ignored) coBrowsing->sessionStopped();
    }
    // Copied: it may be replaced inside.
    const auto observer = mStateObserver;
    if (observer) observer(change);
}

void Panoptra::stop() {
    assertMainThread();
    if (!mSession) {
        Log::warning("Already stopped");
        return;
    }
    end();
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->sessionStopped();
    networkManager->monitoringSender->logCoBrowsingStop(MonitoringSender::logged("stop"));
}

void Panoptra::restart(Completion completion) {
    assertMainThread();
    if (!mSession) {
        completion(StringError("Panoptra is not started"));
        return;
    }
    if (mSession->state() == Session::State::starting) {
        mSession->restartAfterStart(std::move(completion));
        return;
    }
    const bool force = mSession->isForced();
    end();
    networkManager->monitoringSender->logCoBrowsingStop(MonitoringSender::logged("stop"));
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->sessionRestarts();
    begin(std::nullopt, {.force = force, .isRestart = true, .completion = std::move(completion)});
}

void Panoptra::end() {
    if (auto& shared = applicationConfig->config.panoptraConfig) shared->isRecordingStarted = false;
    std::exchange(mSession, nullptr)->stop();
}

void Panoptra::observeApplicationState() {
    closingIsSetup = true;
    Application& application = platform::current().application();
    mResignObservation = application.observeWillResignActive([this] { willResignActive(); });
    mActiveObservation = application.observeDidBecomeActive([this] { didBecomeActive(); });
}

void Panoptra::willResignActive() {
    assertMainThread();
    Log::debug("App goes in background");
    // A stop leaves this timer alone: it then closes the sender once more.
    backgroundTimeoutTimer =
        platform::current().timers().schedule(seconds(secondsToClosing), false, [this] { closeSender(); });
}

void Panoptra::closeSender() {
    Log::debug("Timeout; Close sender");
    backgroundTimeoutTimer.reset();
    if (mSession) {
        mSession->suspend();
    } else if (mMessageSender) {
        mMessageSender->close();
    }
}

void Panoptra::didBecomeActive() {
    assertMainThread();
    const bool wasShort = std::exchange(backgroundTimeoutTimer, nullptr) != nullptr;
    if (!mSession) return;
    // One that was closed, or is to be, before the application resigned once more is not open all the same.
    const auto state = mSession->state();
    const bool isOpen = state == Session::State::sharing || state == Session::State::reconnecting;
    if (!wasShort || !isOpen) mSession->resume();
}

void Panoptra::consentGiven() const {
    networkManager->monitoringSender->logCoBrowsingAccept(MonitoringSender::logged("acceptance"));
}

void Panoptra::runStopCallback() const {
    // Copied: the host may register others inside it.
    const auto callback = stopCallback;
    if (callback) callback();
}

void Panoptra::registerCallbacks(std::function<void()> onStart, std::function<void()> onStop) {
    startCallback = std::move(onStart);
    stopCallback = std::move(onStop);
}

}  // namespace merovanta
