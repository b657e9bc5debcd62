#pragma once

#include <optional>
#include <string>

namespace merovanta {

/// The identifiers of the current visit.
struct VisitConfig {
    /// The device, or the identified user.
    std::optional<std::string> visitorId;
    /// One visit: one configuration, or one reopened session.
    std::optional<std::string> visitId;
    /// One service session.
    std::optional<std::string> sessionId;
    std::optional<std::string> customerId;

    /// Takes the ids given; without a visitor id the device's identifier, without a session id a new one.
    void update(const std::string& newVisitId, const std::optional<std::string>& newVisitorId,
                const std::optional<std::string>& newSessionId);
};

}  // namespace merovanta
