#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// The longest identifier of a tenant, a visitor or a session that is kept whole.
inline constexpr std::size_t kMaxIdentifierBytes = 128;

/// A copy of at most `maxBytes` bytes that is valid UTF-8: broken sequences become U+FFFD, a longer text is
/// cut between two characters and ends in an ellipsis.
std::string boundedText(std::string_view text, std::size_t maxBytes);

/// The text on one line of printable ASCII and UTF-8; control characters appear as \xNN.
std::string singleLine(std::string_view text);

/// Serialises without ever throwing on broken UTF-8.
std::string toText(const nlohmann::json& value);

}  // namespace merovanta::devservice
