#include "PresenceRegistry.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {
namespace {

constexpr const char* kInvitationChannel = "SCB";

std::string bounded(const std::string& identifier) {
    return boundedText(identifier, kMaxIdentifierBytes);
}

}  // namespace

nlohmann::json PresenceRegistry::poll(const std::string& tenantId, const std::string& visitorId,
                                      const ChannelPoll& poll, Moment now) {
    Presence& presence = obtain(bounded(tenantId), bounded(visitorId), now);
    presence.lastSeen = now;
    presence.listens = poll.channels.contains(kInvitationChannel);
    if (poll.status) presence.status = *poll.status;
    nlohmann::json messages = nlohmann::json::array();
    if (presence.listens && presence.invitation == Presence::Invitation::Waiting) {
        presence.invitation = Presence::Invitation::Delivered;
        presence.invitedAt = now;
        messages.push_back({{"c", kInvitationChannel}, {"p", "{}"}});
        changed_();
    }
    return messages;
}

void PresenceRegistry::invite(Presence& presence, const AgentIdentity& agent, Moment now) {
    presence.invitation = Presence::Invitation::Waiting;
    presence.invitedAt = now;
    presence.invitedBy = agent;
    changed_();
}

std::optional<AgentIdentity> PresenceRegistry::takeDelivered(const std::string& tenantId,
                                                             const std::string& visitorId, Moment now) {
    Presence* presence = find(bounded(tenantId), bounded(visitorId));
    if (presence == nullptr || presence->invitation != Presence::Invitation::Delivered) return std::nullopt;
    presence->invitation = Presence::Invitation::None;
    changed_();
    if (now - presence->invitedAt > kInvitationHolds) return std::nullopt;
    return presence->invitedBy;
}

Presence* PresenceRegistry::find(std::string_view number) {
    const auto found = std::find_if(presences_.begin(), presences_.end(), [&](const Presence& presence) {
        return std::to_string(presence.number) == number;
    });
    return found == presences_.end() ? nullptr : &*found;
}

void PresenceRegistry::expire(Moment now) {
    const auto gone = [&](const Presence& presence) { return now - presence.lastSeen > kTimeout; };
    if (std::erase_if(presences_, gone) > 0) changed_();
}

nlohmann::json PresenceRegistry::toJson() const {
    nlohmann::json result = nlohmann::json::array();
    for (const Presence& presence : presences_)
        result.push_back(presence.toJson());
    return result;
}

Presence& PresenceRegistry::obtain(const std::string& tenantId, const std::string& visitorId, Moment now) {
    if (Presence* known = find(tenantId, visitorId)) return *known;
    if (presences_.size() >= kCapacity) {
        presences_.erase(
            std::min_element(presences_.begin(), presences_.end(),
                             [](const Presence& a, const Presence& b) { return a.lastSeen < b.lastSeen; }));
    }
    Presence& presence = presences_.emplace_back();
    presence.number = ++lastNumber_;
    presence.tenantId = tenantId;
    presence.visitorId = visitorId;
    presence.firstSeen = now;
    changed_();
    return presence;
}

Presence* PresenceRegistry::find(const std::string& tenantId, const std::string& visitorId) {
    const auto found = std::find_if(presences_.begin(), presences_.end(), [&](const Presence& presence) {
        return presence.tenantId == tenantId && presence.visitorId == visitorId;
    });
    return found == presences_.end() ? nullptr : &*found;
}

}  // namespace merovanta::devservice
