#include "AgentRegistry.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {
namespace {

constexpr std::array<const char*, 8> kColours = {"#2456d6", "#a3380f", "#0f6b4a", "#8a2f9c",
                                                 "#8a5300", "#0b6477", "#b01657", "#4a4fb0"};

// Until it tells another.
std::string firstName(const std::string& id) {
    std::string digits = id.substr(0, 4);
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    return "Agent " + digits;
}

}  // namespace

nlohmann::json AgentRegistry::Agent::toJson() const {
    return {{"id", id}, {"name", name}, {"colour", colour}};
}

AgentRegistry::Agent* AgentRegistry::of(const Request& request) {
    const std::string id = access_.browser(request);
    if (id.empty()) return nullptr;
    const auto known =
        std::find_if(agents_.begin(), agents_.end(), [&](const Agent& agent) { return agent.id == id; });
    if (known != agents_.end()) {
        known->lastSeen = currentMoment();
        return &*known;
    }
    if (agents_.size() >= kCapacity) {
        agents_.erase(std::min_element(agents_.begin(), agents_.end(), [](const Agent& a, const Agent& b) {
            return a.lastSeen < b.lastSeen;
        }));
    }
    agents_.push_back({id, firstName(id), freeColour(), currentMoment()});
    changed_();
    return &agents_.back();
}

AgentIdentity AgentRegistry::identityOf(const Request& request) {
    const Agent* agent = of(request);
    return agent == nullptr ? AgentIdentity() : agent->identity();
}

const AgentRegistry::Agent* AgentRegistry::find(std::string_view id) const {
    const auto found =
        std::find_if(agents_.begin(), agents_.end(), [&](const Agent& agent) { return agent.id == id; });
    return found == agents_.end() ? nullptr : &*found;
}

std::optional<std::string> AgentRegistry::rename(Agent& agent, const std::string& name) {
    constexpr std::size_t mostBytes = 60;
    const bool blank = name.find_first_not_of(' ') == std::string::npos;
    if (blank || name.size() > mostBytes || singleLine(name) != name || boundedText(name, mostBytes) != name)
        return "a name has 1 to 60 bytes on one line";
    if (agent.name == name) return std::nullopt;
    agent.name = name;
    changed_();
    return std::nullopt;
}

std::string AgentRegistry::freeColour() const {
    const auto uses = [this](const char* colour) {
        return std::count_if(agents_.begin(), agents_.end(),
                             [&](const Agent& agent) { return agent.colour == colour; });
    };
    return *std::min_element(kColours.begin(), kColours.end(),
                             [&](const char* a, const char* b) { return uses(a) < uses(b); });
}

}  // namespace merovanta::devservice
