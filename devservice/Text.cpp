#include "Text.h"

#include <array>
#include <nlohmann/json.hpp>

namespace merovanta::devservice {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::string_view kEllipsis = "\xE2\x80\xA6";

// Length of the well-formed UTF-8 sequence at the start of `text`, 0 when there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : 2U;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0U) != 0x80U) return 0;
    }
    const unsigned char second = at(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool tooLarge = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || tooLarge ? 0 : length;
}

}  // namespace

std::string boundedText(std::string_view text, std::size_t maxBytes) {
    std::string result;
    std::size_t cut = 0;  // the longest prefix that leaves room for the ellipsis
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        const std::string_view piece = length == 0 ? kReplacement : text.substr(0, length);
        if (piece.size() > maxBytes - result.size()) {
            result.resize(cut);
            return result += kEllipsis;
        }
        result += piece;
        text.remove_prefix(length == 0 ? 1 : length);
        if (result.size() + kEllipsis.size() <= maxBytes) cut = result.size();
    }
    return result;
}

std::string singleLine(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            result += "\\x";
            result += digits[byte >> 4U];
            result += digits[byte & 0xFU];
        } else {
            result += c;
        }
    }
    return result;
}

std::string toText(const nlohmann::json& value) {
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace merovanta::devservice
