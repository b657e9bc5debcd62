#pragma once

#include <Merovanta/Export.h>

#include <functional>
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
    /// alone: nothing runs then.
    void start();

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

    /// Stores the host's closures, replacing earlier ones. stopCallback runs when the agent closes the
    /// session, which still stands by then; startCallback is kept for later use and not called.
    void registerCallbacks(std::function<void()> startCallback, std::function<void()> stopCallback);

    /// The five-digit code by which the visitor lets an agent in, new for every session; empty before the
    /// first.
    [[nodiscard]] std::string shareId() const;

 private:
    friend class Merovanta;
    MerovantaPanoptra() = default;
};

}  // namespace merovanta
