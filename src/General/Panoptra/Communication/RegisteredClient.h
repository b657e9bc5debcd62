#pragma once

#include <functional>
#include <optional>
#include <string>

#include "General/Panoptra/Communication/CommunicationChannel.h"

namespace merovanta {

/// One client of the polling.
struct RegisteredClient {
    /// A second registration under the same id replaces the first.
    std::string id;
    CommunicationChannel channel = CommunicationChannel::CF;
    /// The pause between polls that this client asks for, in seconds.
    double rate = 0;
    /// Called on the main thread with each message that comes on the channel.
    std::function<void(const std::string& payload)> callback;
    /// What goes out with every poll.
    std::optional<std::string> payload;
    /// Extra parameters for the poll, as key=value.
    std::optional<std::string> additionalParams;
};

}  // namespace merovanta
