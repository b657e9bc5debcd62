#pragma once

#include <optional>
#include <string>

#include "General/Panoptra/Network/Message/Bidirectional/Click.h"

namespace merovanta {

/// One message of the agent's; any of its parts may be absent.
struct BidirectionalMessage {
    /// A PNG picture, not looked into yet.
    std::optional<std::string> drawing;
    std::optional<bool> start;
    std::optional<bool> bidirectional;
    std::optional<bool> stop;
    std::optional<Click> click;
    std::optional<bool> optIn;

    /// For the log.
    [[nodiscard]] std::string description() const;
};

}  // namespace merovanta
