#pragma once

#include <Merovanta/SessionStatus.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "General/Panoptra/Network/NetworkManager.h"
#include "General/Panoptra/Session.h"
#include "General/Panoptra/SessionObservers.h"
#include "General/StringError.h"
#include "Platform/Application.h"
#include "Platform/Timer.h"

namespace merovanta {

/// The session controller: runs one screen-sharing session at a time. When the application stays in the
/// background it closes the transport, and opens it again, under new visit and session ids, when the
/// application is back. Thread: main.
class Panoptra : public std::enable_shared_from_this<Panoptra> {
 public:
    using Completion = Session::Completion;

    /// Why there is no session after a start that has not failed.
    static constexpr const char* notWanted = "The service leaves this visitor alone";

    Panoptra(std::shared_ptr<InitSender> initSender,
             std::shared_ptr<MessageSenderManager> messageSenderManager,
             std::shared_ptr<ViewMonitor> viewMonitor,
             std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
             std::shared_ptr<NetworkManager> networkManager);

    /// Starts a session. A start that fails leaves nothing running. Without a session id the visitor's
    /// consent is taken back and a new session id made. The completion is called once, when the session runs
    /// or could not be started, also if a stop comes first. If the service answers with nothing, or that this
    /// visitor is to be ignored, it receives no error and nothing runs.
    void start(bool force, const std::optional<std::string>& sessionId, SessionStarter by,
               Completion completion);

    void stop(SessionEnd reason);

    /// Stops and starts again, as the last start did, but as a new service session. The co-browsing widget
    /// stays. An error if none runs or the new start fails. While a start is under way it waits for its end;
    /// several that wait are one.
    void restart(Completion completion);

    /// A session is started and not stopped.
    [[nodiscard]] bool isRunning() const { return mSession != nullptr; }

    /// The session that is started; null without one.
    [[nodiscard]] const std::shared_ptr<Session>& session() const { return mSession; }

    /// Tells the host of every state that a session enters, when that is done.
    [[nodiscard]] const std::shared_ptr<SessionObservers>& observers() const { return mObservers; }

    /// The transport of the running session, or of the last one; null before the first.
    [[nodiscard]] const std::shared_ptr<MessageSender>& messageSender() const { return mMessageSender; }

    /// Tells the service that the visitor has agreed to let the agent in.
    void consentGiven() const;

    /// Tells the host that the agent closes the session. If the host stops it inside, it is still the agent
    /// who has ended it.
    void runStopCallback();

    /// startCallback runs when a session has been started, after its completion; stopCallback when the agent
    /// closes the session.
    void registerCallbacks(std::function<void()> startCallback, std::function<void()> stopCallback);

 private:
    void begin(const std::optional<std::string>& sessionId, SessionStarter by, Session::Order order);
    [[nodiscard]] Session::Delegate delegate();
    void sessionChanged(const Session& session, const Session::Change& change);
    static void tellWidget(const Session& session, const Session::Change& change);
    void tellHost(const Session& session, const Session::Change& change);
    [[nodiscard]] SessionStatus statusOf(const Session::Change& change) const;
    void runStartCallback() const;
    void end(SessionEnd reason);

    void observeApplicationState();
    void willResignActive();
    void closeSender();
    void didBecomeActive();

    std::shared_ptr<InitSender> initSender;
    std::shared_ptr<MessageSenderManager> messageSenderManager;
    std::shared_ptr<ViewMonitor> viewMonitor;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MessageSender> mMessageSender;
    std::shared_ptr<NetworkManager> networkManager;
    std::function<void()> startCallback = [] {};
    std::function<void()> stopCallback = [] {};
    bool closingIsSetup = false;
    std::unique_ptr<Timer> backgroundTimeoutTimer;

    std::shared_ptr<Session> mSession;
    std::shared_ptr<SessionObservers> mObservers = std::make_shared<SessionObservers>();
    // Of the session that runs, or of the last one.
    SessionStarter mStartedBy = SessionStarter::host;
    SessionEnd mEndReason = SessionEnd::host;
    bool mIsAgentClosing = false;
    std::unique_ptr<Observation> mResignObservation;
    std::unique_ptr<Observation> mActiveObservation;
};

}  // namespace merovanta
