#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// So many random bytes, of the quality that keys need, in hexadecimal digits.
std::string randomHex(std::size_t bytes);

/// The SHA-256 of a text in hexadecimal digits.
std::string digest(std::string_view text);

/// The same in base64.
std::string digestBase64(std::string_view text);

/// Whether two texts are the same, in a time that tells nothing about where they differ.
bool isSameSecret(std::string_view a, std::string_view b);

}  // namespace merovanta::devservice
