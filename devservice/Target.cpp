#include "Target.h"

#include <algorithm>

namespace merovanta::devservice {
namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::string percentDecode(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size();
        const int high = escape ? hexDigit(text[i + 1]) : -1;
        const int low = escape ? hexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0) {
            result += text[i];
            continue;
        }
        result += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return result;
}

bool needsEncoding(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte <= 0x20 || byte >= 0x7F;
}

}  // namespace

Target Target::parse(std::string_view target) {
    Target result;
    const std::size_t mark = target.find('?');
    result.path = percentDecode(target.substr(0, mark));
    if (mark == std::string_view::npos) return result;
    std::string_view rest = target.substr(mark + 1);
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find('&'));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const std::size_t equals = item.find('=');
        const std::string_view value =
            equals == std::string_view::npos ? std::string_view() : item.substr(equals + 1);
        result.query.emplace(percentDecode(item.substr(0, equals)), percentDecode(value));
    }
    return result;
}

std::string Target::value(std::string_view key) const {
    const auto found = query.find(key);
    return found == query.end() ? std::string() : found->second;
}

std::optional<std::string> repairRequestHead(std::string_view head) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::string_view line = head.substr(0, head.find("\r\n"));
    const std::size_t begin = line.find(' ');
    const std::size_t end = line.rfind(" HTTP/");
    if (begin == std::string_view::npos || end == std::string_view::npos || end <= begin) return std::nullopt;
    const std::string_view target = line.substr(begin + 1, end - begin - 1);
    if (std::none_of(target.begin(), target.end(), needsEncoding)) return std::nullopt;

    std::string repaired(head.substr(0, begin + 1));
    for (const char c : target) {
        if (needsEncoding(c)) {
            const auto byte = static_cast<unsigned char>(c);
            repaired += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        } else {
            repaired += c;
        }
    }
    return repaired += head.substr(end);
}

}  // namespace merovanta::devservice
