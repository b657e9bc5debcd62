#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Network/Initialisation.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "General/Panoptra/Network/NetworkManager.h"
#include "General/StringError.h"
#include "Platform/Timer.h"

namespace merovanta {

/// One screen-sharing session, from the start that makes it to the stop that lets it go. It owns what was set
/// going for it; whatever is still on its way holds it weakly, so that what a stop has overtaken finds
/// nothing left to act on. Thread: main.
class Session : public std::enable_shared_from_this<Session> {
 public:
    enum class State {
        /// Asks the service, chooses the transport and begins to watch the screen.
        starting,
        /// The stream is open, as far as anyone knows.
        sharing,
        /// The stream is closed: the application has been away for too long.
        suspended,
        /// The stream is being opened again.
        reconnecting,
        /// Nothing goes on any more.
        ended,
    };

    enum class Reason {
        /// It was asked for: the start, the stop.
        asked,
        /// The start has failed.
        startFailed,
        /// The service wants nothing of this visitor.
        ignored,
        /// The application has been away for too long, and is back.
        away,
        returned,
        /// The stream could not be opened again after the return: closed until the next stop and start.
        returnFailed,
        /// The stream broke, and is open again.
        networkLost,
        networkBack,
    };

    struct Change {
        State state = State::starting;
        Reason reason = Reason::asked;
        /// What went wrong, if anything did.
        std::optional<StringError> error;
    };

    /// Receives nothing if nothing failed: then the session runs, or is not wanted by the service.
    using Completion = std::function<void(const std::optional<StringError>&)>;

    /// What a session works with.
    struct Parts {
        std::shared_ptr<InitSender> initSender;
        std::shared_ptr<MessageSenderManager> messageSenderManager;
        std::shared_ptr<ViewMonitor> viewMonitor;
        std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
        std::shared_ptr<NetworkManager> networkManager;
        /// The transport of the session before; null if there was none.
        std::shared_ptr<MessageSender> lastSender;
    };

    /// What was asked for.
    struct Order {
        bool force = false;
        /// Takes the place of a session that has just been stopped for it.
        bool isRestart = false;
        /// Called once: when the session runs, could not be started, is not wanted by the service, or was
        /// overtaken by a stop.
        Completion completion;
    };

    struct Delegate {
        /// The session has entered this state; the first is told by start().
        std::function<void(Session&, const Change&)> changed;
        std::function<void(const std::shared_ptr<MessageSender>&)> senderSelected;
        /// The start is over, for which these restarts have waited.
        std::function<void(std::vector<Completion>)> restartsAreDue;
    };

    Session(Parts parts, Order order, Delegate delegate);

    void start();

    /// Ends it, whatever it does; the transport is closed.
    void stop();

    /// The application has been away for too long: closes the stream, or, during the start, as soon as that
    /// is over.
    void suspend();

    /// The application is back: opens the stream again, under new visit and session ids. One that is open
    /// still is closed before.
    void resume();

    /// Keeps a restart until the start under way is over: whoever waits for that is to hear of it.
    void restartAfterStart(Completion completion);

    [[nodiscard]] State state() const { return mState; }
    [[nodiscard]] bool isForced() const { return mOrder.force; }
    [[nodiscard]] bool isRestart() const { return mOrder.isRestart; }

 private:
    /// The one place where the state changes.
    void enter(State state, Reason reason, const std::optional<StringError>& error = {});

    void initReplied(const InitSender::Reply& reply);
    void leaveAlone(const std::optional<MonitoringConfigDTO>& reply);
    void goOn(const MonitoringConfigDTO& reply, const std::string& pageName);
    void storeReply(const MonitoringConfigDTO& reply);
    void startMonitor();
    void started();
    void startFailed(const StringError& error);
    void startIsOver(const std::optional<StringError>& error);

    // The transport: polling, or a WebSocket if that opens in time.
    void openStream(const std::string& pageName, bool mayUseWebSocket, std::function<void()> done);
    void tryWebSocket(const std::string& pageName);
    void webSocketOpened();
    void webSocketFailed();
    void poll(const std::string& pageName);
    void use(const std::shared_ptr<MessageSender>& sender);

    void closeStream();
    void reopeningReplied(const std::string& pageName, const InitSender::Reply& reply);
    void reopeningFailed(const InitSender::Reply& reply);
    void reopen(const MonitoringConfigDTO& reply, const std::string& pageName);
    void reconnected();

    // Recovery from a stream that breaks.
    void streamOpened();
    void streamLost();
    void streamSilent();
    void interrupt();
    void checkHealth(int failuresBefore);
    void healthy();
    void unhealthy();

    void pauseWatching();
    void resumeWatching();
    void endWatching();
    void callOff();

    /// The call of one of the session's own, unless it is gone by then.
    [[nodiscard]] std::function<void()> weakly(void (Session::*call)());

    /// A WebSocket on its way.
    struct Attempt {
        std::string pageName;
        std::unique_ptr<Timer> deadline;
    };

    Parts mParts;
    Order mOrder;
    Delegate mDelegate;
    State mState = State::starting;
    std::shared_ptr<MessageSender> mSender;
    // What opens the stream, for the first time or again: as long as it is held, nothing has overtaken it.
    std::shared_ptr<Initialisation> mInitialisation;
    std::vector<Completion> mWaitingRestarts;
    std::unique_ptr<Attempt> mWebSocketAttempt;
    std::function<void()> mStreamIsChosen;
    // The sender has been chosen here; until then it is the one left over from before.
    bool mHasStream = false;
    bool mIsAway = false;
    bool mWasLostWhileStarting = false;
    bool mMustReconnect = false;
    // Recoveries in a row that came to nothing.
    int mVainRecoveries = 0;
};

}  // namespace merovanta
