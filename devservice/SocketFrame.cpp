#include "SocketFrame.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

namespace merovanta::devservice {
namespace {

using nlohmann::json;

std::optional<std::string> decodeBase64(std::string_view text) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    while (text.ends_with('='))
        text.remove_suffix(1);
    std::string result;
    std::uint32_t bits = 0;
    unsigned pending = 0;
    for (const char c : text) {
        const std::size_t digit = alphabet.find(c);
        if (digit == std::string_view::npos) return std::nullopt;
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
        pending += 6;
        if (pending < 8) continue;
        pending -= 8;
        result += static_cast<char>(bits >> pending & 0xFFU);
    }
    return result;
}

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    while (times-- > 0)
        result += text;
    return result;
}

// A whole number from 1 to `most`; 1 when the key is absent.
std::optional<std::size_t> number(const json& description, const char* key, std::size_t most) {
    const auto found = description.find(key);
    if (found == description.end()) return 1;
    if (!found->is_number_unsigned() || *found < 1U || *found > most) return std::nullopt;
    return found->get<std::size_t>();
}

// What may stand in a closing handshake; the codes in the middle never go over the wire.
bool isCloseCode(const json& value) {
    if (!value.is_number_unsigned() || value < 1000U || value > 4999U) return false;
    return !(value >= 1004U && value <= 1006U) && value != 1015U;
}

}  // namespace

std::variant<SocketFrame, std::string> SocketFrame::parse(const json& description) {
    constexpr std::array<const char*, 4> kinds{"text", "binary", "close", "drop"};
    const auto isNamed = [&](const char* key) {
        return description.is_object() && description.contains(key);
    };
    if (std::count_if(kinds.begin(), kinds.end(), isNamed) != 1) {
        return "the body must be a JSON object with one of \"text\", \"binary\", \"close\" and \"drop\"";
    }
    if (isNamed("drop")) return SocketFrame{.kind = Kind::Drop};
    if (isNamed("close")) {
        if (!isCloseCode(description["close"])) return "\"close\" must be a code that may be sent";
        return SocketFrame{.kind = Kind::Close, .code = description["close"].get<std::uint16_t>()};
    }
    const json& content = description[isNamed("text") ? "text" : "binary"];
    const auto repeat = number(description, "repeat", kMaxBytes);
    const auto count = number(description, "count", kMaxCount);
    if (!content.is_string() || !repeat || !count)
        return "the frame's content, \"repeat\" or \"count\" is wrong";
    const auto& text = content.get_ref<const std::string&>();
    const auto bytes = isNamed("text") ? std::optional<std::string>(text) : decodeBase64(text);
    if (!bytes) return "\"binary\" must be base64";
    if (bytes->size() > kMaxBytes / *repeat) return "the frame is too large";
    return SocketFrame{.kind = isNamed("text") ? Kind::Text : Kind::Binary,
                       .payload = std::make_shared<const std::string>(repeated(*bytes, *repeat)),
                       .count = *count};
}

}  // namespace merovanta::devservice
