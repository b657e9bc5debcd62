#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace merovanta {

/// Decodes padded base64; absent if anything else is in the text, white space included.
[[nodiscard]] std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace merovanta
