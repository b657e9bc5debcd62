#include "General/Panoptra/Panoptra.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

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
    const auto start = std::make_shared<Start>(Start{++mRun, force, std::move(completion)});
    Log::debug("Start");
    auto& session = applicationConfig->config.panoptraConfig;
    if (!sessionId && session) session->optIn = false;
    applicationConfig->renewVisit(sessionId);
    if (session) session->resetSession();
    Log::debug("Get init");
    ViewUtils::frontScreenName([weak = weak_from_this(), start](const std::optional<std::string>& name) {
        const auto self = weak.lock();
        if (!self || !self->goesOn(start)) return;
        if (name) {
            self->requestInit(start, *name);
        } else {
            self->finish(start, StringError("Cannot get current controller name"));
        }
    });
}

void Panoptra::requestInit(const std::shared_ptr<Start>& start, const std::string& pageName) {
    initSender->sendInit(pageName, start->force, [weak = weak_from_this(), start](InitSender::Reply reply) {
        ViewUtils::runOnMainQueue([weak, start, reply = std::move(reply)] {
            const auto self = weak.lock();
            if (self && self->goesOn(start)) self->initReplied(start, reply);
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
    if (!config) {
        Log::warning("Config is nil");
    } else if (config->ignoreIp) {
        Log::debug("Ignoring");
    } else {
        goOn(start, *config);
    }
}

void Panoptra::goOn(const std::shared_ptr<Start>& start, const MonitoringConfigDTO& reply) {
    // Asked for anew: the visitor may have moved on while the service answered.
    ViewUtils::frontScreenName(
        [weak = weak_from_this(), start, reply](const std::optional<std::string>& name) {
            const auto self = weak.lock();
            if (!self || !self->goesOn(start)) return;
            if (!name) {
                self->finish(start, StringError("Cannot get current controller name"));
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
                                         if (controller && controller->goesOn(start))
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
}

void Panoptra::selectSender(const std::string& pageName) {
    const auto& xhrSender = messageSenderManager->xhrSender;
    if (mMessageSender != nullptr) xhrSender->discardQueue();
    mMessageSender = xhrSender;
    Log::debug(std::string("Selected message sender: ") + mMessageSender->typeName());
    mMessageSender->connect(pageName, {}, {});
    networkManager->pingSender->start(mMessageSender);
}

void Panoptra::finish(const std::shared_ptr<Start>& start, const std::optional<StringError>& error) {
    if (error) {
        mIsRunning = false;
    } else if (const auto& user = applicationConfig->config.activeUserTag; user && mMessageSender) {
        mMessageSender->sendUserTag(*user, applicationConfig->startTime(), {});
    }
    start->completion(error);
}

bool Panoptra::goesOn(const std::shared_ptr<Start>& start) const {
    if (start->run == mRun) return true;
    start->completion(StringError("Panoptra was stopped while it started"));
    return false;
}

void Panoptra::stop() {
    assertMainThread();
    if (!mIsRunning) {
        Log::warning("Already stopped");
        return;
    }
    ++mRun;
    networkManager->pingSender->invalidate();
    viewMonitor->stop();
    if (mMessageSender) mMessageSender->close();
    mIsRunning = false;
    if (auto& session = applicationConfig->config.panoptraConfig) session->isRecordingStarted = false;
}

void Panoptra::registerCallbacks(std::function<void()> onStart, std::function<void()> onStop) {
    startCallback = std::move(onStart);
    stopCallback = std::move(onStop);
}

}  // namespace merovanta
