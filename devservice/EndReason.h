#pragma once

namespace merovanta::devservice {

/// Why a session is over, as far as the service can tell.
enum class EndReason {
    Visitor,     ///< the app stopped it and said so in its activity log
    Agent,       ///< an agent asked the app to close it
    Background,  ///< the app closed the stream without stopping the session: it is in the background, or on
                 ///< its way
    Away,        ///< it has been in the background for long
    Continued,   ///< the same visitor goes on in a newer session
    Silent,      ///< nothing has come for long: closed, crashed or offline
    Unopened     ///< initialised, and no stream followed
};

/// As the control API writes it.
constexpr const char* name(EndReason reason) {
    constexpr const char* kNames[] = {"visitor",   "agent",  "background", "away",
                                      "continued", "silent", "unopened"};
    return kNames[static_cast<int>(reason)];
}

}  // namespace merovanta::devservice
