#include "random/Step.h"

#include <array>
#include <cstddef>
#include <ostream>

namespace merovanta::testing {

namespace {

constexpr std::array names{"wait",
                           "start",
                           "stop",
                           "identify",
                           "identifyWithoutId",
                           "clear",
                           "coBrowse",
                           "stopCoBrowsing",
                           "closeWidget",
                           "resign",
                           "activate",
                           "invite",
                           "agentMessage",
                           "agentTaps",
                           "askForConsent",
                           "answer",
                           "weather",
                           "initReply",
                           "screen",
                           "visitorActs",
                           "preferWebSocket",
                           "webSocket"};
static_assert(names.size() == static_cast<std::size_t>(Action::actions));

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Step& step) {
    return stream << names.at(static_cast<std::size_t>(step.action)) << ' ' << step.kind;
}

rc::Gen<std::vector<Step>> steps() {
    const auto action =
        rc::gen::weightedOneOf<int>({{4, rc::gen::just(0)},
                                     {1, rc::gen::just(static_cast<int>(Action::start))},
                                     {6, rc::gen::inRange(1, static_cast<int>(Action::actions))}});
    const auto step = rc::gen::apply(
        [](int number, unsigned kind) {
            return Step{static_cast<Action>(number), kind};
        },
        action, rc::gen::inRange(0U, 24U));
    return rc::gen::container<std::vector<Step>>(step);
}

}  // namespace merovanta::testing
