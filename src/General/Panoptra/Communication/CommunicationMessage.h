#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "General/Panoptra/Communication/CommunicationChannel.h"
#include "General/Result.h"

namespace merovanta {

/// One message on one channel, either way.
struct CommunicationMessage {
    CommunicationChannel channel = CommunicationChannel::CF;
    /// Mostly JSON text of the channel's own record.
    std::string payload;

    [[nodiscard]] nlohmann::ordered_json toJson() const;

    [[nodiscard]] static Result<CommunicationMessage> decode(const nlohmann::json& json);
};

}  // namespace merovanta
