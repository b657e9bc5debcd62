#pragma once

#include <rapidcheck.h>
#include <iosfwd>
#include <vector>

namespace merovanta::testing {

/// What may happen at any moment. Nothing else does until the next: only waiting lets time pass.
enum class Action {
    wait,
    start,
    stop,
    identify,
    identifyWithoutId,
    clear,
    coBrowse,
    stopCoBrowsing,
    closeWidget,
    resign,
    activate,
    invite,
    agentMessage,
    agentTaps,
    askForConsent,
    answer,
    weather,
    initReply,
    screen,
    visitorActs,
    preferWebSocket,
    webSocket,
    interrupt,
    actions,
};

/// One thing that happens, and which of its kinds.
struct Step {
    Action action = Action::wait;
    unsigned kind = 0;
};

std::ostream& operator<<(std::ostream& stream, const Step& step);

/// Sequences in which there is enough waiting for things to come about.
[[nodiscard]] rc::Gen<std::vector<Step>> steps();

}  // namespace merovanta::testing
