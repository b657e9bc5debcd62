#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "General/Panoptra/Network/NetworkManager.h"
#include "General/StringError.h"
#include "Platform/Application.h"
#include "Platform/Timer.h"

namespace merovanta {

/// The session controller: runs one screen-sharing session at a time. When the application stays in the
/// background it closes the transport, and opens it again, under new visit and session ids, when the
/// application is back. Thread: main.
class Panoptra : public std::enable_shared_from_this<Panoptra> {
 public:
    /// Receives nothing on success.
    using Completion = std::function<void(const std::optional<StringError>&)>;

    Panoptra(std::shared_ptr<InitSender> initSender,
             std::shared_ptr<MessageSenderManager> messageSenderManager,
             std::shared_ptr<ViewMonitor> viewMonitor,
             std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
             std::shared_ptr<NetworkManager> networkManager);

    /// Starts a session. After an error that came from the view monitor, what was started by then (pictures,
    /// pings, the stream) goes on until a later start succeeds and is stopped. Without a session id the
    /// visitor's consent is taken back and a new session id made. The completion is called once, when the
    /// session runs or could not be started; it is not called if the service answers with nothing, or that
    /// this visitor is to be ignored: then the controller stays started, without doing anything, until it is
    /// stopped.
    void start(bool force, const std::optional<std::string>& sessionId, Completion completion);

    void stop();

    /// Stops and starts again, as the last start did, but as a new service session. The co-browsing widget
    /// stays. An error if none runs or the new start fails.
    void restart(Completion completion);

    [[nodiscard]] bool isRunning() const { return mIsRunning; }

    /// The transport of the running session, or of the last one; null before the first.
    [[nodiscard]] const std::shared_ptr<MessageSender>& messageSender() const { return mMessageSender; }

    /// Tells the service that the visitor has agreed to let the agent in.
    void consentGiven() const;

    /// Tells the host that the agent has closed the session.
    void runStopCallback() const;

    /// stopCallback runs when the agent closes the session; startCallback is only kept.
    void registerCallbacks(std::function<void()> startCallback, std::function<void()> stopCallback);

 private:
    struct Start;

    void end();
    void requestInit(const std::shared_ptr<Start>& start, const std::string& pageName);
    void initReplied(const std::shared_ptr<Start>& start, const InitSender::Reply& reply);
    void goOn(const std::shared_ptr<Start>& start, const MonitoringConfigDTO& reply);
    void storeReply(const MonitoringConfigDTO& reply);
    void selectSender(const std::string& pageName);
    void startEnded();
    void finish(const std::shared_ptr<Start>& start, const std::optional<StringError>& error);

    /// Whether a stop has overtaken this start, which is then completed with an error.
    [[nodiscard]] bool failIfOvertaken(const std::shared_ptr<Start>& start) const;

    void observeApplicationState();
    void willResignActive();
    void closeSender();
    void didBecomeActive();
    void reopen();
    void requestReopening(unsigned opening, const std::string& pageName);
    void reopeningReplied(unsigned opening, const std::string& pageName, const InitSender::Reply& reply);
    void reconnect(unsigned opening, const std::string& pageName);
    void reconnected();

    std::shared_ptr<InitSender> initSender;
    std::shared_ptr<MessageSenderManager> messageSenderManager;
    std::shared_ptr<ViewMonitor> viewMonitor;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MessageSender> mMessageSender;
    std::shared_ptr<NetworkManager> networkManager;
    std::function<void()> startCallback = [] {};
    std::function<void()> stopCallback = [] {};
    bool mIsRunning = false;
    bool closingIsSetup = false;
    std::unique_ptr<Timer> backgroundTimeoutTimer;

    // Whether the last start was forced, and whether it is still under way.
    bool mIsForced = false;
    bool mIsStarting = false;
    std::function<void()> mPendingRestart;
    // Counts starts and stops: a start that was overtaken by a stop must not go on.
    unsigned mRun = 0;
    // The running session has its sender, and may be opened again when the application comes back.
    bool mMayReopen = false;
    // Counts what opens or closes the sender: a reopening that was overtaken must not go on.
    unsigned mOpening = 0;
    std::unique_ptr<Observation> mResignObservation;
    std::unique_ptr<Observation> mActiveObservation;
};

}  // namespace merovanta
