#pragma once

#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/Communication/CommunicationMessage.h"

namespace merovanta {

/// Reads the reply to a poll, a JSON array of messages or an object with one under "m"; those on unknown
/// channels and what is no message at all are left out. Absent if it is neither, or holds too many. Any
/// thread.
[[nodiscard]] std::optional<std::vector<CommunicationMessage>> parsePollReply(const std::string& body);

}  // namespace merovanta
