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
                           "webSocket",
                           "interrupt"};
static_assert(names.size() == static_cast<std::size_t>(Action::actions));

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Step& step) {
    return stream << names.at(static_cast<std::size_t>(step.action)) << ' ' << step.kind;
}

rc::Gen<std::vector<Step>> steps() {
    const auto action = rc::gen::weightedOneOf<int>(
        {{5, rc::gen::just(0)},
         {1, rc::gen::just(static_cast<int>(Action::start))},
         {2, rc::gen::elementOf(
                 std::vector<int>{static_cast<int>(Action::visitorActs), static_cast<int>(Action::agentTaps),
                                  static_cast<int>(Action::resign), static_cast<int>(Action::activate)})},
         {6, rc::gen::inRange(1, static_cast<int>(Action::actions))}});
    const auto step = rc::gen::apply(
        [](int number, unsigned kind) {
            return Step{static_cast<Action>(number), kind};
        },
        action, rc::gen::inRange(0U, 24U));
    return rc::gen::container<std::vector<Step>>(step);
}

}  // namespace merovanta::testing
