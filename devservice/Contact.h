#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "ChatHistory.h"
#include "Moment.h"

namespace merovanta::devservice {

/// A person under one visitor id of a tenant: who it is and its chat, with a session or without one.
struct Contact {
    std::uint32_t number = 0;
    std::string tenantId, visitorId;
    /// The service session that was last seen with this visitor id.
    std::string sessionId;
    /// What the app reported last (see parseIdentity); null before.
    nlohmann::json identity;
    std::optional<Moment> identifiedAt;
    /// The contact as which the same person goes on after being identified anew; 0 for none.
    std::uint32_t continuedAs = 0;
    /// How many chat pages are open.
    std::size_t chatPages = 0;
    ChatHistory chat;
    /// Until when they count as typing, if they do.
    Moment visitorTypesUntil{}, agentTypesUntil{};
    /// Which agent types; empty when it has no name.
    std::string typingAgent;
    Moment firstSeen{}, lastSeen{};

    /// Everything but the messages.
    nlohmann::json toJson() const;
};

}  // namespace merovanta::devservice
