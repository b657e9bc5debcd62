#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "AgentIdentity.h"
#include "ChannelPoll.h"
#include "Moment.h"

namespace merovanta::devservice {

/// A visitor whose app polls the channels, with a session or without one.
struct Presence {
    enum class Invitation { None, Waiting, Delivered };

    std::uint32_t number = 0;
    std::string tenantId, visitorId;
    /// The last that was reported; polls need not repeat it.
    ChannelPoll::Status status;
    /// Whether the last poll asked for an agent's invitation.
    bool listens = false;
    Invitation invitation = Invitation::None;
    /// When the invitation began to wait or was delivered.
    Moment invitedAt{};
    AgentIdentity invitedBy;
    Moment firstSeen{}, lastSeen{};

    nlohmann::json toJson() const;
};

}  // namespace merovanta::devservice
