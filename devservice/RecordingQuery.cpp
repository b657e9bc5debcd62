#include "RecordingQuery.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string_view>
#include <utility>

#include "Text.h"

namespace merovanta::devservice {
namespace {

constexpr std::size_t kMaxTextBytes = 200;

// What an agent types before the colon, and the columns of the search that it stands for.
constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kFields = {{{"code", "code"},
                                                                                   {"visitor", "visitor"},
                                                                                   {"page", "page"},
                                                                                   {"tag", "tag label"},
                                                                                   {"agent", "agent"},
                                                                                   {"note", "note"}}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kConditions = {
    {{"live", "endedAt IS NULL"},
     {"chat", "chats > 0"},
     {"agent", "acts > 0"},
     {"notes", "EXISTS (SELECT 1 FROM notes WHERE recording = recordings.id)"}}};

template <std::size_t size>
std::string_view find(const std::array<std::pair<std::string_view, std::string_view>, size>& table,
                      std::string_view key) {
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const auto& item) { return item.first == key; });
    return found == table.end() ? std::string_view() : found->second;
}

// The search sees letters and digits only; a word without any would stand for nothing.
bool hasWord(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || std::isalnum(byte) != 0;
    });
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text)
        result += c == '"' ? std::string("\"\"") : std::string(1, c == '\0' ? ' ' : c);
    return result + "\"*";
}

std::string matchOf(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find_first_of(" \t\r\n"));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const std::size_t colon = std::min(word.find(':'), word.size());
        const std::string_view field = find(kFields, word.substr(0, colon));
        const std::string_view sought = field.empty() ? word : word.substr(colon + 1);
        if (!hasWord(sought)) continue;
        if (!result.empty()) result += " AND ";
        if (!field.empty()) result += "{" + std::string(field) + "} : ";
        result += quoted(sought);
    }
    return result;
}

std::optional<std::int64_t> number(const std::string& text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size() && !text.empty();
    return whole ? std::optional(value) : std::nullopt;
}

}  // namespace

RecordingQuery RecordingQuery::parse(const Target& target) {
    RecordingQuery query;
    query.match = matchOf(boundedText(target.value("q"), kMaxTextBytes));
    query.from = number(target.value("from"));
    query.to = number(target.value("to"));
    if (const auto condition = find(kConditions, target.value("show")); !condition.empty())
        query.condition = condition;
    query.offset = std::max<std::int64_t>(number(target.value("offset")).value_or(0), 0);
    query.limit = std::clamp<std::int64_t>(number(target.value("limit")).value_or(50), 1, kMostAtOnce);
    return query;
}

}  // namespace merovanta::devservice
