#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "AgentIdentity.h"
#include "ConsoleAccess.h"
#include "Moment.h"

namespace merovanta::devservice {

/// The agents that the service has seen, a bounded number of them: each is a browser, however many of its
/// pages are open.
class AgentRegistry {
 public:
    static constexpr std::size_t kCapacity = 64;

    struct Agent {
        /// Stays the same as long as the browser keeps its cookie, and tells nothing about that.
        std::string id;
        std::string name;
        /// "#rrggbb", on which white text can be read.
        std::string colour;
        Moment lastSeen{};

        AgentIdentity identity() const { return {id, name}; }
        nlohmann::json toJson() const;
    };

    /// `changed` is called when one came or changed its name.
    AgentRegistry(const ConsoleAccess& access, std::function<void()> changed)
        : access_(access), changed_(std::move(changed)) {}

    /// Whose browser the request comes from; null for a program. Valid until the next call.
    Agent* of(const Request& request);
    /// The identity of that agent, or none.
    AgentIdentity identityOf(const Request& request);
    /// Whether an agent has to sign in, and can sign out.
    bool needsSignIn() const { return !access_.isOpen(); }

    /// Null when it is not known.
    const Agent* find(std::string_view id) const;

    /// Returns what is wrong with the name, if anything.
    std::optional<std::string> rename(Agent& agent, const std::string& name);

 private:
    std::string freeColour() const;

    const ConsoleAccess& access_;
    std::function<void()> changed_;
    std::list<Agent> agents_;
};

}  // namespace merovanta::devservice
