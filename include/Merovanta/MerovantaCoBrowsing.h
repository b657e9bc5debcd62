#pragma once

#include <Merovanta/Export.h>

#include <functional>
#include <string>

namespace merovanta {

/// Co-browsing: a screen-sharing session with a small widget over the application, which shows the share code
/// and lets the visitor hide it, end the session and open the chat. Once Merovanta::initConfig() was called,
/// an agent can start it from the other side as well. The one instance is Merovanta::coBrowsing(); it holds
/// no state.
///
/// Nothing is thrown and nothing blocks: what fails is said in the log. Thread: main, for every call and
/// callback.
class MEROVANTA_EXPORT MerovantaCoBrowsing {
 public:
    MerovantaCoBrowsing(const MerovantaCoBrowsing&) = delete;
    MerovantaCoBrowsing& operator=(const MerovantaCoBrowsing&) = delete;

    /// Shows the widget and starts a session, whether or not the service wants to watch this visitor.
    void start();

    /// Takes the widget away and ends the session.
    void stop();

    /// As start(); then one of the closures is called: the first when the session runs, the second, with the
    /// reason, when it could not be started or the service leaves this visitor alone. The second may be
    /// called before this returns, and is called when a stop() overtakes the start.
    void startWith(std::function<void()> success, std::function<void(const std::string& error)> failure);

 private:
    friend class Merovanta;
    MerovantaCoBrowsing() = default;
};

}  // namespace merovanta
