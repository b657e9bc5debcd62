#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Presence.h"

namespace merovanta::devservice {

/// The visitors whose apps poll the channels, a bounded number of them; who stops polling is forgotten.
class PresenceRegistry {
 public:
    static constexpr std::size_t kCapacity = 64;
    /// Five of the polls that an app makes while it listens for an invitation.
    static constexpr std::chrono::seconds kTimeout{15};
    /// How long a session that starts counts as the answer to an invitation.
    static constexpr std::chrono::seconds kInvitationHolds{60};

    /// `changed` is called when one came, went or was invited, not at each poll.
    explicit PresenceRegistry(std::function<void()> changed) : changed_(std::move(changed)) {}

    /// The visitor polled. Returns the messages for it, an array; a waiting invitation is in it once.
    nlohmann::json poll(const std::string& tenantId, const std::string& visitorId, const ChannelPoll& poll,
                        Moment now);

    /// Lets the next poll that asks for it be answered with an invitation, one however often it is invited
    /// before.
    void invite(Presence& presence, const AgentIdentity& agent, Moment now);

    /// A session of the visitor starts: who invited, if it follows a delivered invitation; told once.
    std::optional<AgentIdentity> takeDelivered(const std::string& tenantId, const std::string& visitorId,
                                               Moment now);

    /// The one with this number in decimal, or null.
    Presence* find(std::string_view number);

    /// Forgets who has not polled for too long; to be called about once a second.
    void expire(Moment now);

    /// Oldest first.
    nlohmann::json toJson() const;

 private:
    Presence& obtain(const std::string& tenantId, const std::string& visitorId, Moment now);
    Presence* find(const std::string& tenantId, const std::string& visitorId);

    std::function<void()> changed_;
    std::uint32_t lastNumber_ = 0;
    std::list<Presence> presences_;
};

}  // namespace merovanta::devservice
