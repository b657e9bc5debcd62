#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace merovanta {

enum class SessionState {
    /// No session has been started yet.
    idle,
    /// The service is being asked; nothing of the screen has left the process.
    starting,
    /// The stream is open: the screen is shared, unless the service does not want to watch.
    sharing,
    /// The application has been in the background for too long: the stream is closed until it is back.
    suspended,
    /// The stream is being opened again: the application is back, or the network has failed.
    reconnecting,
    /// The last session is over.
    ended,
};

enum class SessionEnd {
    /// The host application has stopped it.
    host,
    /// The visitor has, with the widget's button.
    visitor,
    agent,
    /// It could not be started or, back from the background, not be opened again; see failure. A visitor whom
    /// the service leaves alone is one.
    failure,
    /// Another one takes its place, for instance because another visitor was identified.
    restart,
};

enum class SessionStarter {
    /// The host application, with or without the widget.
    host,
    /// An agent, by an invitation to co-browse: the widget is there.
    invitation,
    /// An agent, by force.
    forced,
};

/// What is known of the session: a plain value.
struct SessionStatus {
    /// Idle until a session is started for the first time.
    SessionState state = SessionState::idle;
    /// Why the session has ended; absent before.
    std::optional<SessionEnd> endReason;
    /// The text of a failure.
    std::string failure;
    /// Absent while idle. A restarted session keeps the one of the session before.
    std::optional<SessionStarter> startedBy;
    /// The five-digit code by which the visitor lets an agent in; empty while idle.
    std::string shareId;
    /// The class of the stream, as the log names it: "XhrMessageSender" polls over HTTP,
    /// "WebSocketMessageSender" is what it says. Empty until the session has come to share.
    std::string transport;
    /// Since when this is the state; absent while idle.
    std::optional<std::chrono::system_clock::time_point> since;

    /// Whether a session is started and not over: the state is starting, sharing, suspended or reconnecting.
    [[nodiscard]] bool isRunning() const {
        return state != SessionState::idle && state != SessionState::ended;
    }

    /// Whether nothing has changed.
    bool operator==(const SessionStatus&) const = default;
};

}  // namespace merovanta
