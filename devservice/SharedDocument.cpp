#include "SharedDocument.h"

#include <algorithm>

namespace merovanta::devservice {
namespace {

constexpr std::size_t kMaxNameBytes = 512;
constexpr std::size_t kMaxTypeBytes = 100;

bool hasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
}

std::string percentEncoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~ ()";
    std::string result;
    for (const char c : text) {
        if (plain.find(c) != std::string_view::npos) {
            result += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        result += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return result;
}

std::optional<std::string> disposition(std::string_view form, const std::string& name) {
    if (form == "encoded") return "attachment; filename=\"" + percentEncoded(name) + '"';
    if (form == "quoted") return "attachment; filename=\"" + name + '"';
    if (form == "unquoted") return "attachment; filename=" + name;
    if (form == "nameless") return "attachment";
    if (form == "none") return "";
    return std::nullopt;
}

}  // namespace

std::variant<SharedDocument, std::string> SharedDocument::make(std::string name, std::string contentType,
                                                               std::string_view form,
                                                               std::string_view content) {
    if (name.size() > kMaxNameBytes || hasControl(name))
        return "the name is too long or holds control characters";
    const auto isPrintable = [](char c) { return c >= 0x20 && c < 0x7F; };
    if (contentType.empty()) contentType = "application/octet-stream";
    if (contentType.size() > kMaxTypeBytes ||
        !std::all_of(contentType.begin(), contentType.end(), isPrintable))
        return "the content type is too long or not printable";
    auto header = disposition(form, name);
    if (!header) return "there is no such form of the name";
    return SharedDocument{std::move(name), std::move(contentType), std::move(*header), std::string(content)};
}

}  // namespace merovanta::devservice
