#include "General/Panoptra/Panoptra.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/MainThreadOwned.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr double secondsToClosing = 5.0;

StringError noControllerName() {
    return StringError("Cannot get current controller name");
}

/// The outcome of an entry in the service's log: the session goes on whatever it is.
MonitoringSender::Completion logged(const char* event) {
    return [event](const std::optional<StringError>& error) {
        if (error)
            Log::warning("Cannot log co-browsing " + std::string(event) + ": " + error->errorDescription());
    };
}

}  // namespace

/// One start on its way.
struct Panoptra::Start {
    unsigned run;
    bool force;
    Completion completion;
};

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
    if (mIsRunning) {
        completion(StringError("Panoptra is already started"));
        return;
    }
    mIsRunning = true;
    mIsForced = force;
    mIsStarting = true;
    mMayReopen = false;
    ++mOpening;
    const auto start = ownedByMainThread(Start{++mRun, force, std::move(completion)});
    Log::debug("Start");
    messageSenderManager->xhrSender->finishLastRound();
    auto& session = applicationConfig->config.panoptraConfig;
    if (!sessionId && session) session->optIn = false;
    applicationConfig->renewVisit(sessionId);
    if (session) session->resetSession();
    networkManager->monitoringSender->logCoBrowsingAccept(logged("acceptance"));
    Log::debug("Get init");
    ViewUtils::frontScreenName([weak = weak_from_this(), start](const std::optional<std::string>& name) {
        const auto self = weak.lock();
        if (!self || self->failIfOvertaken(start)) return;
        if (name) {
            self->requestInit(start, *name);
        } else {
            self->finish(start, noControllerName());
        }
    });
}

void Panoptra::requestInit(const std::shared_ptr<Start>& start, const std::string& pageName) {
    initSender->sendInit(pageName, start->force, [weak = weak_from_this(), start](InitSender::Reply reply) {
        ViewUtils::runOnMainQueue([weak, start, reply = std::move(reply)] {
            const auto self = weak.lock();
            if (self && !self->failIfOvertaken(start)) self->initReplied(start, reply);
        });
    });
}

void Panoptra::initReplied(const std::shared_ptr<Start>& start, const InitSender::Reply& reply) {
    assertMainThread();
    if (!reply) {
        finish(start, reply.error());
        return;
    }
    const auto& config = reply.value();
    if (config && !config->ignoreIp) {
        goOn(start, *config);
        return;
    }
    if (config) {
        Log::debug("Ignoring");
    } else {
        Log::warning("Config is nil");
    }
    startEnded();
}

void Panoptra::goOn(const std::shared_ptr<Start>& start, const MonitoringConfigDTO& reply) {
    // Asked for anew: the visitor may have moved on while the service answered.
    ViewUtils::frontScreenName(
        [weak = weak_from_this(), start, reply](const std::optional<std::string>& name) {
            const auto self = weak.lock();
            if (!self || self->failIfOvertaken(start)) return;
            if (!name) {
                self->finish(start, noControllerName());
                return;
            }
            self->storeReply(reply);
            self->selectSender(*name);
            const bool isWanted = start->force || reply.startMonitoringType == "u";
            Log::debug(std::string("Should start monitoring: ") +
                       (reply.shouldStartMonitoring ? "true" : "false"));
            if (!reply.shouldStartMonitoring && !isWanted) {
                self->finish(start, std::nullopt);
                return;
            }
            Log::debug("Should start or force is set");
            Log::debug("Start monitor");
            self->viewMonitor->resetChangeDetection();
            self->viewMonitor->start(self->mMessageSender,
                                     [weak, start](const std::optional<StringError>& error) {
                                         const auto controller = weak.lock();
                                         if (controller && !controller->failIfOvertaken(start))
                                             controller->finish(start, error);
                                     });
        });
}

void Panoptra::storeReply(const MonitoringConfigDTO& reply) {
    ApplicationConfig& config = applicationConfig->config;
    if (config.panoptraConfig) {
        config.panoptraConfig->iosConfig = reply.ios;
        config.panoptraConfig->storageType = reply.storageType.value_or("l");
    }
    config.chatAvailable = reply.chatActivated;
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>())
        coBrowsing->setChatActivated(reply.chatActivated.value_or(false));
}

void Panoptra::selectSender(const std::string& pageName) {
    const auto& xhrSender = messageSenderManager->xhrSender;
    xhrSender->finishLastRound();
    mMessageSender = xhrSender;
    Log::debug(std::string("Selected message sender: ") + mMessageSender->typeName());
    mMessageSender->connect(pageName, {}, {});
    networkManager->pingSender->start(mMessageSender);
    mMayReopen = true;
}

void Panoptra::finish(const std::shared_ptr<Start>& start, const std::optional<StringError>& error) {
    if (error) {
        mIsRunning = false;
    } else {
        const auto& user = applicationConfig->config.activeUserTag;
        if (user && mMessageSender) mMessageSender->sendUserTag(*user, applicationConfig->startTime(), {});
        networkManager->monitoringSender->logCoBrowsingStart(logged("start"));
        if (!closingIsSetup) observeApplicationState();
    }
    start->completion(error);
    if (start->run == mRun) startEnded();
}

void Panoptra::startEnded() {
    mIsStarting = false;
    if (const auto restart = std::exchange(mPendingRestart, nullptr)) restart();
}

bool Panoptra::failIfOvertaken(const std::shared_ptr<Start>& start) const {
    if (start->run == mRun) return false;
    start->completion(StringError("Panoptra was stopped while it started"));
    return true;
}

void Panoptra::stop() {
    assertMainThread();
    if (!mIsRunning) {
        Log::warning("Already stopped");
        return;
    }
    end();
    // Resolved at the moment of use: it is itself built from this controller.
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->sessionStopped();
    networkManager->monitoringSender->logCoBrowsingStop(logged("stop"));
}

void Panoptra::restart(Completion completion) {
    assertMainThread();
    if (!mIsRunning) {
        completion(StringError("Panoptra is not started"));
        return;
    }
    if (mIsStarting) {
        // One after the other: whoever waits for the start under way is to hear of it.
        mPendingRestart = [this, completion = std::move(completion)] { restart(completion); };
        return;
    }
    end();
    networkManager->monitoringSender->logCoBrowsingStop(logged("stop"));
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (coBrowsing) coBrowsing->sessionRestarts();
    start(mIsForced, std::nullopt,
          [this, run = mRun + 1, coBrowsing,
           completion = std::move(completion)](const std::optional<StringError>& error) {
              if (coBrowsing && run == mRun) coBrowsing->sessionRestarted(!error);
              completion(error);
          });
}

void Panoptra::end() {
    ++mRun;
    mIsStarting = false;
    mPendingRestart = nullptr;
    ++mOpening;
    networkManager->pingSender->invalidate();
    viewMonitor->stop();
    if (mMessageSender) mMessageSender->close();
    networkManager->healthCheck->stop();
    mIsRunning = false;
    if (auto& session = applicationConfig->config.panoptraConfig) session->isRecordingStarted = false;
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
    ++mOpening;
    if (mMessageSender) mMessageSender->close();
    backgroundTimeoutTimer.reset();
}

void Panoptra::didBecomeActive() {
    assertMainThread();
    if (backgroundTimeoutTimer) {
        backgroundTimeoutTimer.reset();
        return;
    }
    // Nothing is opened that is not meant to be open: no session, or one whose start is still under way.
    if (!mIsRunning || !mMayReopen) return;
    if (auto& visit = applicationConfig->config.visitConfig) {
        visit->visitId = IdUtils::newUuid();
        visit->sessionId = IdUtils::newUuid();
    }
    reopen();
}

void Panoptra::reopen() {
    Log::debug("Call init sender");
    ViewUtils::frontScreenName(
        [weak = weak_from_this(), opening = ++mOpening](const std::optional<std::string>& name) {
            const auto self = weak.lock();
            if (!self || self->mOpening != opening) return;
            if (name) {
                self->requestReopening(opening, *name);
            } else {
                self->reopeningReplied(opening, {}, noControllerName());
            }
        });
}

void Panoptra::requestReopening(unsigned opening, const std::string& pageName) {
    initSender->sendInit(pageName, /*force=*/true,
                         [weak = weak_from_this(), opening, pageName](InitSender::Reply reply) {
                             ViewUtils::runOnMainQueue([weak, opening, pageName, reply = std::move(reply)] {
                                 const auto self = weak.lock();
                                 if (self && self->mOpening == opening)
                                     self->reopeningReplied(opening, pageName, reply);
                             });
                         });
}

void Panoptra::reopeningReplied(unsigned opening, const std::string& pageName,
                                const InitSender::Reply& reply) {
    assertMainThread();
    const auto config = reply ? reply.value() : std::nullopt;
    if (config && !config->ignoreIp) {
        storeReply(*config);
        // In a turn of its own: a picture already on its way, masked by the lists just replaced, comes before
        // it and is dropped.
        ViewUtils::runOnMainQueue([weak = weak_from_this(), opening, pageName] {
            const auto self = weak.lock();
            if (self && self->mOpening == opening) self->reconnect(opening, pageName);
        });
        return;
    }
    // Closed for good: until the next stop and start.
    mMayReopen = false;
    if (!reply) {
        Log::error("Cannot restart session after close: " + reply.error().errorDescription());
    } else if (!config) {
        Log::warning("Config is nil");
    } else {
        Log::debug("Ignoring");
    }
}

void Panoptra::reconnect(unsigned opening, const std::string& pageName) {
    // What was left over belongs to the visit that ended.
    messageSenderManager->xhrSender->finishLastRound();
    const auto report = [weak = weak_from_this(), opening](bool isConnected) {
        const auto self = weak.lock();
        if (!self || self->mOpening != opening) return;
        if (isConnected) {
            self->reconnected();
        } else {
            Log::warning("WebSocket reconnect failed");
        }
    };
    mMessageSender->connect(
        pageName, [report] { report(true); }, [report] { report(false); });
    if (!mMessageSender->reportsConnection()) report(true);
}

void Panoptra::reconnected() {
    viewMonitor->clearLastScreenshot();
    // The line says so whatever the transport.
    Log::debug("WebSocket reconnect success");
}

void Panoptra::consentGiven() const {
    networkManager->monitoringSender->logCoBrowsingAccept(logged("acceptance"));
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
