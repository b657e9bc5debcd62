#include "General/Panoptra/Panoptra.h"

#include <chrono>
#include <map>
#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"
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

void Panoptra::start(bool force, const std::optional<std::string>& sessionId, SessionStarter by,
                     Completion completion) {
    assertMainThread();
    const SessionObservers::Scope scope(mObservers);
    if (mSession) {
        completion(StringError("Panoptra is already started"));
        return;
    }
    if (!platform::current().application().exists()) {
        completion(StringError("There is no application object yet"));
        return;
    }
    // A visitor who starts anew may be asked anew.
    const auto agent =
        by == SessionStarter::host ? Injection::resolve<BidirectionalMessageHandler>() : nullptr;
    if (agent) agent->visitorStarts();
    begin(sessionId, by, {.force = force, .completion = std::move(completion)});
}

void Panoptra::begin(const std::optional<std::string>& sessionId, SessionStarter by, Session::Order order) {
    Log::debug("Start");
    mStartedBy = by;
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
    const bool isOver = change.reason == Reason::startFailed || change.reason == Reason::ignored;
    if (isOver && mSession.get() == &session) mSession.reset();
    tellWidget(session, change);
    if (change.state == Session::State::ended) {
        if (const auto agent = Injection::resolve<BidirectionalMessageHandler>()) agent->sessionEnded();
    }
    tellHost(session, change);
}

/// A first start has its own completion to tell the widget.
void Panoptra::tellWidget(const Session& session, const Session::Change& change) {
    using Reason = Session::Reason;
    using State = Session::State;
    // Resolved at the moment of use: it is itself built from this controller.
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (!coBrowsing) return;
    const bool isFirst = change.reason == Reason::asked && !session.isRestart();
    const bool hasFailed = change.reason == Reason::startFailed && session.isRestart();
    if (change.reason == Reason::ignored || hasFailed) coBrowsing->sessionStopped();
    if (change.reason == Reason::returnFailed) coBrowsing->sessionIsLost();
    if (change.state == State::reconnecting) coBrowsing->sessionReconnects();
    if (change.state == State::sharing && !isFirst) coBrowsing->sessionReconnected();
}

void Panoptra::tellHost(const Session& session, const Session::Change& change) {
    // One that could not be opened again has ended before it is stopped.
    const bool wasOver = mObservers->status().state == SessionState::ended;
    if (change.state == Session::State::ended && wasOver) return;
    std::function<void()> afterwards;
    if (change.state == Session::State::sharing && change.reason == Session::Reason::asked) {
        afterwards = [weak = weak_from_this(), started = session.weak_from_this()] {
            const auto self = weak.lock();
            if (self && !started.expired() && started.lock() == self->mSession) self->runStartCallback();
        };
    }
    mObservers->changed(statusOf(change), std::move(afterwards));
}

SessionStatus Panoptra::statusOf(const Session::Change& change) const {
    using State = Session::State;
    static const std::map<State, SessionState> states{{State::starting, SessionState::starting},
                                                      {State::sharing, SessionState::sharing},
                                                      {State::suspended, SessionState::suspended},
                                                      {State::reconnecting, SessionState::reconnecting},
                                                      {State::ended, SessionState::ended}};
    SessionStatus status;
    status.state = states.at(change.state);
    status.startedBy = mStartedBy;
    const auto& shared = applicationConfig->config.panoptraConfig;
    if (shared) status.shareId = shared->shareId.value_or("");
    status.since = std::chrono::system_clock::time_point(platform::current().clock().sinceEpoch());
    if (change.state == State::starting) return status;
    if (change.state != State::ended) {
        if (mMessageSender) status.transport = mMessageSender->typeName();
        return status;
    }
    status.transport = mObservers->status().transport;
    status.endReason = change.reason == Session::Reason::asked ? mEndReason : SessionEnd::failure;
    if (status.endReason == SessionEnd::failure)
        status.failure = change.error ? change.error->errorDescription() : notWanted;
    return status;
}

void Panoptra::stop(SessionEnd reason) {
    assertMainThread();
    const SessionObservers::Scope scope(mObservers);
    if (!mSession) {
        Log::warning("Already stopped");
        // One that is about to start does not.
        if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->startOvertaken();
        return;
    }
    end(reason);
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->sessionStopped();
    networkManager->monitoringSender->logCoBrowsingStop(MonitoringSender::logged("stop"));
}

void Panoptra::restart(Completion completion) {
    assertMainThread();
    const SessionObservers::Scope scope(mObservers);
    if (!mSession) {
        completion(StringError("Panoptra is not started"));
        return;
    }
    if (mSession->state() == Session::State::starting) {
        mSession->restartAfterStart(std::move(completion));
        return;
    }
    const bool force = mSession->isForced();
    end(SessionEnd::restart);
    networkManager->monitoringSender->logCoBrowsingStop(MonitoringSender::logged("stop"));
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->sessionReconnects();
    begin(std::nullopt, mStartedBy, {.force = force, .isRestart = true, .completion = std::move(completion)});
}

void Panoptra::end(SessionEnd reason) {
    mEndReason = mIsAgentClosing ? SessionEnd::agent : reason;
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

void Panoptra::runStartCallback() const {
    // Copied: the host may register others inside it.
    const auto callback = startCallback;
    if (callback) callback();
}

void Panoptra::runStopCallback() {
    const auto callback = stopCallback;
    mIsAgentClosing = true;
    if (callback) callback();
    mIsAgentClosing = false;
}

void Panoptra::registerCallbacks(std::function<void()> onStart, std::function<void()> onStop) {
    startCallback = std::move(onStart);
    stopCallback = std::move(onStop);
}

}  // namespace merovanta
