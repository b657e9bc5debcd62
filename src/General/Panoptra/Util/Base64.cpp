#include "General/Panoptra/Util/Base64.h"

#include <array>
#include <cstdint>

namespace merovanta {

namespace {

constexpr std::uint8_t invalid = 0xFF;

constexpr std::array<std::uint8_t, 256> makeValues() {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> values{};
    values.fill(invalid);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values.at(static_cast<std::uint8_t>(alphabet[i])) = static_cast<std::uint8_t>(i);
    return values;
}

}  // namespace

std::optional<std::string> decodeBase64(std::string_view text) {
    static constexpr auto values = makeValues();
    if (text.size() % 4 != 0) return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        std::uint32_t group = 0;
        for (std::size_t j = i; j < i + 4; ++j) {
            const bool isPadding = j >= text.size() - padding;
            const std::uint8_t value = isPadding ? 0 : values.at(static_cast<std::uint8_t>(text[j]));
            if (value == invalid) return std::nullopt;
            group = group << 6 | value;
        }
        for (int shift = 16; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<char>(group >> shift & 0xFF));
    }
    bytes.resize(bytes.size() - padding);
    return bytes;
}

}  // namespace merovanta
