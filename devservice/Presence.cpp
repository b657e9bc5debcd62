#include "Presence.h"

#include <nlohmann/json.hpp>

namespace merovanta::devservice {
namespace {

const char* name(Presence::Invitation invitation) {
    switch (invitation) {
        case Presence::Invitation::None:
            return "none";
        case Presence::Invitation::Waiting:
            return "waiting";
        case Presence::Invitation::Delivered:
            return "delivered";
    }
    return "";
}

}  // namespace

nlohmann::json Presence::toJson() const {
    return {{"id", std::to_string(number)},
            {"tenantId", tenantId},
            {"visitorId", visitorId},
            {"customerId", status.customerId},
            {"page", status.page},
            {"device", status.device},
            {"listens", listens},
            {"invitation", name(invitation)},
            {"joinedAt", status.joined ? nlohmann::json(*status.joined) : nlohmann::json()},
            {"firstSeenAt", firstSeen.time_since_epoch().count()},
            {"lastSeenAt", lastSeen.time_since_epoch().count()}};
}

}  // namespace merovanta::devservice
