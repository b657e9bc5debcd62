#pragma once

#include <Merovanta/Export.h>
#include <Merovanta/Observation.h>
#include <Merovanta/Outcome.h>
#include <Merovanta/SessionStatus.h>

#include <functional>
#include <memory>
#include <string>

namespace merovanta {

/// Screen sharing. The one instance is Merovanta::panoptra(); it holds no state.
///
/// Nothing is thrown and nothing blocks: what fails is said in the log. Thread: main, for every call and
/// callback.
class MEROVANTA_EXPORT MerovantaPanoptra {
 public:
    MerovantaPanoptra(const MerovantaPanoptra&) = delete;
    MerovantaPanoptra& operator=(const MerovantaPanoptra&) = delete;

    /// Stores tenant and token in place of those given to Merovanta::initConfig(), then starts as start()
    /// does.
    void start(const std::string& tenantId, const std::string& token);

    /// Starts a session: the service is asked what to hide and whether to watch, then the masked screen, the
    /// changes of page and the taps are streamed to it. Logs an error if a session runs already, or if this
    /// one cannot be started; the latter may be tried again. A visitor whom the service ignores is left
    /// alone: nothing runs then. A session that could not be opened again on return from the background has
    /// ended, but counts as running here until stop().
    void start();

    /// As above; the outcome is told once: nothing when the session runs, else why there is none, also if the
    /// service leaves this visitor alone or a stop() comes first.
    void start(Outcome outcome);
    /// Both of the above.
    void start(const std::string& tenantId, const std::string& token, Outcome outcome);

    /// Whether the sessions that start from now on are to use a WebSocket for their stream in place of HTTP
    /// polling, which is the default: the agent's taps then arrive without waiting for the next request.
    /// Where the service does not allow it, or it does not open within 5 seconds, the session polls.
    void preferWebSocket(bool isPreferred);

    /// Ends the session. Logs a warning if none runs.
    void stop();

    /// Whether the service has said that the agent records the session. It says so with the agent's end of a
    /// session: true from then on, so in stopCallback, until the session has stopped.
    [[nodiscard]] bool connected() const;

    /// Attaches a free text to the visit. Logs an error if no session has been started yet. After stop()
    /// nothing is sent any more, and the next session does not get it either.
    void tag(const std::string& tag);

    /// As tag(); the outcome is an error if no session runs to take the tag or its application is in the
    /// background, else nothing once the tag is on its way.
    void tag(const std::string& tag, Outcome outcome);

    /// Stores the host's closures, replacing earlier ones. startCallback runs whenever a session has been
    /// started, whoever began it, also in place of another, and is open; not when it is back from the
    /// background. stopCallback runs when the agent closes the session, which still stands by then.
    void registerCallbacks(std::function<void()> startCallback, std::function<void()> stopCallback);

    /// The five-digit code by which the visitor lets an agent in, new for every session; empty before the
    /// first.
    [[nodiscard]] std::string shareId() const;

    /// What is known of the session now.
    [[nodiscard]] SessionStatus status() const;

    /// Calls the observer on every change of the status from now on, until the handle is destroyed: once for
    /// each, in order, at the end of the call that brought it about (start(), stop(), the co-browsing's, the
    /// visitor's) or in a turn of its own. Inside it may do anything: start, stop, tag, add observers and
    /// remove them, itself too; what it changes is told after it, so status() may be ahead of what an
    /// observer is told. Null if there is no platform.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void(const SessionStatus&)> observer);

 private:
    friend class Merovanta;
    MerovantaPanoptra() = default;
};

}  // namespace merovanta
