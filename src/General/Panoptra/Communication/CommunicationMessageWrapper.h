#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Communication/CommunicationMessage.h"

namespace merovanta {

/// The body of one poll.
struct CommunicationMessageWrapper {
    std::set<CommunicationChannel> channels;
    std::vector<CommunicationMessage> messages;
    /// The clients' extra parameters, joined by "&".
    std::optional<std::string> additionalProperties;

    /// Asks for the channels of these clients and carries what they have to say.
    explicit CommunicationMessageWrapper(const ClientRegistry::Clients& clients);

    /// An absent value is left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
