#include "General/Panoptra/Session.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Communication/Communication.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr double secondsToOpen = 5.0;

/// The lines of a session are its controller's.
const Log::Source controller("Panoptra");

StringError overtaken() {
    return StringError("Panoptra was stopped while it started");
}

/// The outcome in a turn of its own: whoever stops a session does not expect to be called back inside.
void completeLater(Session::Completion completion) {
    ViewUtils::runOnMainQueue([completion = std::move(completion)] { completion(overtaken()); });
}

}  // namespace

Session::Session(Parts parts, Order order, Delegate delegate)
    : mParts(std::move(parts)),
      mOrder(std::move(order)),
      mDelegate(std::move(delegate)),
      mSender(mParts.lastSender) {}

void Session::enter(State state, Reason reason, const std::optional<StringError>& error) {
    mState = state;
    if (mDelegate.changed) mDelegate.changed(*this, {state, reason, error});
}

void Session::start() {
    assertMainThread();
    enter(State::starting, Reason::asked);
    Log::debug("Get init", controller);
    mInitialisation = Initialisation::begin(
        mParts.initSender, mParts.applicationConfig, mOrder.force,
        [weak = weak_from_this()](const std::string& /*pageName*/, const InitSender::Reply& reply) {
            if (const auto self = weak.lock()) self->initReplied(reply);
        });
}

void Session::initReplied(const InitSender::Reply& reply) {
    if (!reply) {
        startFailed(reply.error());
        return;
    }
    const auto& config = reply.value();
    if (!config || config->ignoreIp) {
        leaveAlone(config);
        return;
    }
    // Asked for anew: the visitor may have moved on while the service answered.
    ViewUtils::frontScreenName(
        [weak = weak_from_this(), config = *config](const std::optional<std::string>& name) {
            const auto self = weak.lock();
            if (!self || self->mState != State::starting) return;
            if (name) {
                self->goOn(config, *name);
            } else {
                self->startFailed(Initialisation::noControllerName());
            }
        });
}

void Session::leaveAlone(const std::optional<MonitoringConfigDTO>& reply) {
    if (reply) {
        Log::debug("Ignoring", controller);
    } else {
        Log::warning("Config is nil", controller);
    }
    mInitialisation.reset();
    enter(State::ended, Reason::ignored);
    startIsOver(std::nullopt);
}

void Session::goOn(const MonitoringConfigDTO& reply, const std::string& pageName) {
    storeReply(reply);
    const bool isWanted = mOrder.force || reply.startMonitoringType == "u";
    const bool mayUseWebSocket =
        mParts.applicationConfig->config.prefersWebSocket && !reply.disableWebSocket.value_or(false);
    openStream(pageName, mayUseWebSocket, [this, isAsked = reply.shouldStartMonitoring, isWanted] {
        mParts.networkManager->pingSender->start(mSender);
        Log::debug(std::string("Should start monitoring: ") + (isAsked ? "true" : "false"), controller);
        if (isAsked || isWanted) {
            startMonitor();
        } else {
            started();
        }
    });
}

void Session::storeReply(const MonitoringConfigDTO& reply) {
    ApplicationConfig& config = mParts.applicationConfig->config;
    if (config.panoptraConfig) {
        config.panoptraConfig->iosConfig = reply.ios;
        config.panoptraConfig->storageType = reply.storageType.value_or("l");
    }
    Log::debug("Masking lists: " + std::to_string(reply.ios.blacklist.size()) + " tags, " +
               std::to_string(reply.ios.blacklistClasses.size()) + " classes");
    config.chatAvailable = reply.chatActivated;
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>())
        coBrowsing->setChatActivated(reply.chatActivated.value_or(false));
}

void Session::startMonitor() {
    Log::debug("Should start or force is set", controller);
    Log::debug("Start monitor", controller);
    mParts.viewMonitor->resetChangeDetection();
    mParts.viewMonitor->start(mSender, [weak = weak_from_this()](const std::optional<StringError>& error) {
        const auto self = weak.lock();
        if (!self || self->mState != State::starting) return;
        if (error) {
            self->startFailed(*error);
        } else {
            self->started();
        }
    });
}

void Session::started() {
    mInitialisation.reset();
    const auto& user = mParts.applicationConfig->config.activeUserTag;
    if (user) mSender->sendUserTag(*user, mParts.applicationConfig->startTime(), {});
    mParts.networkManager->monitoringSender->logCoBrowsingStart(MonitoringSender::logged("start"));
    enter(State::sharing, Reason::asked);
    startIsOver(std::nullopt);
    // Whoever was told may have ended it.
    if (mState != State::sharing) return;
    if (mIsAway) {
        suspend();
    } else if (mWasLostWhileStarting) {
        streamLost();
    }
}

void Session::startFailed(const StringError& error) {
    callOff();
    endWatching();
    if (mHasStream) mSender->close();
    enter(State::ended, Reason::startFailed, error);
    startIsOver(error);
}

void Session::startIsOver(const std::optional<StringError>& error) {
    if (const auto completion = std::exchange(mOrder.completion, nullptr)) completion(error);
    if (!mWaitingRestarts.empty()) mDelegate.restartsAreDue(std::exchange(mWaitingRestarts, {}));
}

void Session::restartAfterStart(Completion completion) {
    mWaitingRestarts.push_back(std::move(completion));
}

void Session::stop() {
    assertMainThread();
    callOff();
    endWatching();
    if (mSender) mSender->close();
    if (mOrder.completion) completeLater(std::exchange(mOrder.completion, nullptr));
    for (auto& completion : std::exchange(mWaitingRestarts, {}))
        completeLater(std::move(completion));
    enter(State::ended, Reason::asked);
}

void Session::openStream(const std::string& pageName, bool mayUseWebSocket, std::function<void()> done) {
    // What was left over belongs to the visit that ended.
    mParts.messageSenderManager->xhrSender->finishLastRound();
    mStreamIsChosen = std::move(done);
    if (mayUseWebSocket) {
        tryWebSocket(pageName);
    } else {
        poll(pageName);
    }
}

void Session::tryWebSocket(const std::string& pageName) {
    mWebSocketAttempt = std::make_unique<Attempt>();
    mWebSocketAttempt->pageName = pageName;
    mWebSocketAttempt->deadline = platform::current().timers().schedule(seconds(secondsToOpen), false,
                                                                        weakly(&Session::webSocketFailed));
    const auto& sender = mParts.messageSenderManager->webSocketSender;
    sender->setVisit(mInitialisation->visit());
    sender->connect(pageName, weakly(&Session::webSocketOpened), weakly(&Session::webSocketFailed));
}

void Session::webSocketOpened() {
    mWebSocketAttempt.reset();
    use(mParts.messageSenderManager->webSocketSender);
    std::exchange(mStreamIsChosen, nullptr)();
}

void Session::webSocketFailed() {
    Log::warning(mState == State::reconnecting ? "WebSocket reconnect failed" : "WebSocket does not open",
                 controller);
    const std::string pageName = std::exchange(mWebSocketAttempt, nullptr)->pageName;
    mParts.messageSenderManager->webSocketSender->abandon();
    poll(pageName);
}

void Session::poll(const std::string& pageName) {
    use(mParts.messageSenderManager->xhrSender);
    mSender->setVisit(mInitialisation->visit());
    mSender->connect(pageName, {}, {});
    std::exchange(mStreamIsChosen, nullptr)();
}

void Session::use(const std::shared_ptr<MessageSender>& sender) {
    const bool isNew = !mHasStream || mSender != sender;
    mSender = sender;
    mHasStream = true;
    mSender->observeStream({.opened = weakly(&Session::streamOpened),
                            .lost = weakly(&Session::streamLost),
                            .silent = weakly(&Session::streamSilent)});
    if (!isNew) return;
    mDelegate.senderSelected(mSender);
    Log::debug(std::string("Selected message sender: ") + mSender->typeName(), controller);
}

void Session::suspend() {
    assertMainThread();
    if (mState == State::starting) {
        mIsAway = true;
        // That of the session before; this one's own is closed once the start is over.
        if (mSender && !mHasStream && !mWebSocketAttempt) mSender->close();
        return;
    }
    closeStream();
    const bool isOpen = mState == State::sharing || mState == State::reconnecting;
    if (isOpen) enter(State::suspended, Reason::away);
}

void Session::closeStream() {
    callOff();
    pauseWatching();
    mSender->close();
}

void Session::resume() {
    assertMainThread();
    mIsAway = false;
    // Nothing is opened that is not meant to be open: a session whose start is under way, or that has ended.
    if (mState == State::starting || mState == State::ended) return;
    if (mState != State::suspended) closeStream();
    if (auto& visit = mParts.applicationConfig->config.visitConfig) {
        visit->visitId = IdUtils::newUuid();
        visit->sessionId = IdUtils::newUuid();
    }
    Log::debug("Call init sender", controller);
    mInitialisation = Initialisation::begin(
        mParts.initSender, mParts.applicationConfig, /*force=*/true,
        [weak = weak_from_this()](const std::string& pageName, const InitSender::Reply& reply) {
            if (const auto self = weak.lock()) self->reopeningReplied(pageName, reply);
        });
    enter(State::reconnecting, Reason::returned);
}

void Session::reopeningReplied(const std::string& pageName, const InitSender::Reply& reply) {
    const auto config = reply ? reply.value() : std::nullopt;
    if (!config || config->ignoreIp) {
        reopeningFailed(reply);
        return;
    }
    storeReply(*config);
    // In a turn of its own: a picture already on its way, masked by the lists just replaced, comes before it
    // and is dropped.
    ViewUtils::runOnMainQueue(
        [weak = weak_from_this(), reopening = std::weak_ptr(mInitialisation), config = *config, pageName] {
            const auto self = weak.lock();
            if (self && !reopening.expired()) self->reopen(config, pageName);
        });
}

void Session::reopeningFailed(const InitSender::Reply& reply) {
    if (!reply) {
        Log::error("Cannot restart session after close: " + reply.error().errorDescription(), controller);
    } else if (!reply.value()) {
        Log::warning("Config is nil", controller);
    } else {
        Log::debug("Ignoring", controller);
    }
    callOff();
    endWatching();
    enter(State::ended, Reason::returnFailed, reply ? std::nullopt : std::optional(reply.error()));
}

/// By the transport that was stored; but a veto holds for it too.
void Session::reopen(const MonitoringConfigDTO& reply, const std::string& pageName) {
    const bool isWebSocket = mSender == mParts.messageSenderManager->webSocketSender;
    openStream(pageName, isWebSocket && !reply.disableWebSocket.value_or(false), [this] { reconnected(); });
}

void Session::reconnected() {
    mInitialisation.reset();
    resumeWatching();
    // The line says so whatever the transport.
    Log::debug("WebSocket reconnect success", controller);
    enter(State::sharing, Reason::returned);
}

void Session::streamOpened() {
    mParts.networkManager->healthCheck->stop();
    mMustReconnect = false;
    mWasLostWhileStarting = false;
    if (const auto communication = Injection::resolve<Communication>()) communication->resumePolling();
    if (mState != State::reconnecting) return;
    Log::debug("Stream is open again", controller);
    resumeWatching();
    enter(State::sharing, Reason::networkBack);
}

void Session::streamLost() {
    if (mState == State::starting) {
        mWasLostWhileStarting = true;
        return;
    }
    mMustReconnect = true;
    mVainRecoveries = mSender->hasDelivered() ? 0 : mVainRecoveries + 1;
    if (!mSender->reconnectsByItself()) checkHealth(mVainRecoveries);
    interrupt();
}

void Session::streamSilent() {
    const bool isRecovering = mState == State::reconnecting && !mInitialisation;
    if (mState == State::sharing || isRecovering) checkHealth(0);
}

void Session::interrupt() {
    if (mState != State::sharing) return;
    Log::debug("Stream is lost", controller);
    pauseWatching();
    enter(State::reconnecting, Reason::networkLost);
}

void Session::checkHealth(int failuresBefore) {
    mParts.networkManager->healthCheck->start(
        {.healthy = weakly(&Session::healthy), .unhealthy = weakly(&Session::unhealthy)}, failuresBefore);
}

/// A request that is still without an answer, while the service answers others, is taken for one on a
/// connection that is dead.
void Session::healthy() {
    if (!std::exchange(mMustReconnect, false) && !mSender->isSilent()) return;
    interrupt();
    mSender->reconnect();
}

void Session::unhealthy() {
    if (!mMustReconnect && !mSender->isSilent()) {
        // The answer has come after all.
        mParts.networkManager->healthCheck->stop();
        return;
    }
    mMustReconnect = true;
    interrupt();
}

void Session::pauseWatching() {
    mParts.networkManager->pingSender->invalidate();
    mParts.viewMonitor->pause();
}

void Session::resumeWatching() {
    mParts.networkManager->pingSender->start(mSender);
    mParts.viewMonitor->resume(mSender);
}

void Session::endWatching() {
    mParts.networkManager->pingSender->invalidate();
    mParts.viewMonitor->stop();
}

/// Whatever is under way to open the stream, for the first time or again.
void Session::callOff() {
    mInitialisation.reset();
    mParts.networkManager->healthCheck->stop();
    mMustReconnect = false;
    mStreamIsChosen = nullptr;
    if (!std::exchange(mWebSocketAttempt, nullptr)) return;
    mParts.messageSenderManager->webSocketSender->abandon();
}

std::function<void()> Session::weakly(void (Session::*call)()) {
    return [weak = weak_from_this(), call] {
        if (const auto self = weak.lock()) (*self.*call)();
    };
}

}  // namespace merovanta
