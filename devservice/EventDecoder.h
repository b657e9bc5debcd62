#pragma once

#include <panoptra.pb.h>

#include <optional>
#include <string_view>

namespace merovanta::devservice {

/// Decodes a request body. The wire is walked before anything is allocated, so that a body of a few megabytes
/// cannot unfold into millions of objects; nothing is returned when it is malformed or carries too many
/// fields.
std::optional<com::merovanta::panoptra::ProtoMessageList> decodeEvents(std::string_view body);

}  // namespace merovanta::devservice
