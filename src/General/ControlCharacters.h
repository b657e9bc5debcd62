#pragma once

#include <cstddef>
#include <string_view>

namespace merovanta {

/// How many bytes at the beginning of this UTF-8 text are one control character or line separator, which
/// could forge a line or steer a terminal; 0 if none.
[[nodiscard]] constexpr std::size_t controlCharacterSize(std::string_view text) {
    if (text.empty()) return 0;
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F) return 1;
    const bool isC1 = text.size() > 1 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) <= 0x9F;
    if (isC1) return 2;
    return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

}  // namespace merovanta
