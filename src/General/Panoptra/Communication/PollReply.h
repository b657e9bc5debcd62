#pragma once

#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/Communication/CommunicationMessage.h"

namespace merovanta {

/// Reads the reply to a poll, a JSON array of messages; those on unknown channels and what is no message at
/// all are left out. Absent if it is no such array, or holds too many. Any thread.
[[nodiscard]] std::optional<std::vector<CommunicationMessage>> parsePollReply(const std::string& body);

}  // namespace merovanta
