#include "General/Panoptra/Session.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

namespace {

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
        mParts.initSender, mOrder.force,
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
    selectSender(pageName);
    const bool isWanted = mOrder.force || reply.startMonitoringType == "u";
    Log::debug(std::string("Should start monitoring: ") + (reply.shouldStartMonitoring ? "true" : "false"),
               controller);
    if (reply.shouldStartMonitoring || isWanted) {
        startMonitor();
    } else {
        started();
    }
}

void Session::storeReply(const MonitoringConfigDTO& reply) {
    ApplicationConfig& config = mParts.applicationConfig->config;
    if (config.panoptraConfig) {
        config.panoptraConfig->iosConfig = reply.ios;
        config.panoptraConfig->storageType = reply.storageType.value_or("l");
    }
    config.chatAvailable = reply.chatActivated;
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>())
        coBrowsing->setChatActivated(reply.chatActivated.value_or(false));
}

void Session::selectSender(const std::string& pageName) {
    const auto& xhrSender = mParts.messageSenderManager->xhrSender;
    xhrSender->finishLastRound();
    mSender = xhrSender;
    mDelegate.senderSelected(mSender);
    Log::debug(std::string("Selected message sender: ") + mSender->typeName(), controller);
    mSender->connect(pageName, {}, {});
    mParts.networkManager->pingSender->start(mSender);
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
}

void Session::startFailed(const StringError& error) {
    mInitialisation.reset();
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
    mInitialisation.reset();
    mParts.networkManager->pingSender->invalidate();
    mParts.viewMonitor->stop();
    if (mSender) mSender->close();
    mParts.networkManager->healthCheck->stop();
    if (mOrder.completion) completeLater(std::exchange(mOrder.completion, nullptr));
    for (auto& completion : std::exchange(mWaitingRestarts, {}))
        completeLater(std::move(completion));
    enter(State::ended, Reason::asked);
}

void Session::suspend() {
    assertMainThread();
    if (mSender) mSender->close();
    if (mState != State::sharing && mState != State::reconnecting) return;
    mInitialisation.reset();
    enter(State::suspended, Reason::away);
}

void Session::resume() {
    assertMainThread();
    // Nothing is opened that is not meant to be open: a session whose start is under way, or that has ended.
    if (mState == State::starting || mState == State::ended) return;
    if (auto& visit = mParts.applicationConfig->config.visitConfig) {
        visit->visitId = IdUtils::newUuid();
        visit->sessionId = IdUtils::newUuid();
    }
    Log::debug("Call init sender", controller);
    mInitialisation = Initialisation::begin(
        mParts.initSender, /*force=*/true,
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
        [weak = weak_from_this(), reopening = std::weak_ptr(mInitialisation), pageName] {
            const auto self = weak.lock();
            if (self && !reopening.expired()) self->reconnect(pageName);
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
    mInitialisation.reset();
    mParts.networkManager->pingSender->invalidate();
    mParts.viewMonitor->stop();
    enter(State::ended, Reason::returnFailed, reply ? std::nullopt : std::optional(reply.error()));
}

void Session::reconnect(const std::string& pageName) {
    // What was left over belongs to the visit that ended.
    mParts.messageSenderManager->xhrSender->finishLastRound();
    const auto report = [weak = weak_from_this(),
                         reopening = std::weak_ptr(mInitialisation)](bool connected) {
        const auto self = weak.lock();
        if (!self || reopening.expired()) return;
        if (connected) {
            self->reconnected();
        } else {
            Log::warning("WebSocket reconnect failed", controller);
        }
    };
    mSender->connect(
        pageName, [report] { report(true); }, [report] { report(false); });
    if (!mSender->reportsConnection()) report(true);
}

void Session::reconnected() {
    mInitialisation.reset();
    mParts.viewMonitor->clearLastScreenshot();
    // The line says so whatever the transport.
    Log::debug("WebSocket reconnect success", controller);
    enter(State::sharing, Reason::returned);
}

}  // namespace merovanta
