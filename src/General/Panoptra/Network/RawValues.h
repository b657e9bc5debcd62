#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace merovanta {

/// Gives the texts by which an enumeration's cases are known on the wire: a specialisation holds the array
/// `values`, one text for each case in the order of the cases.
template <typename Enumeration>
struct RawValues;

template <typename Enumeration>
[[nodiscard]] std::string rawValue(Enumeration value) {
    return std::string(RawValues<Enumeration>::values.at(static_cast<std::size_t>(value)));
}

/// The case with this text; absent if none has it.
template <typename Enumeration>
[[nodiscard]] std::optional<Enumeration> fromRawValue(std::string_view text) {
    constexpr auto& values = RawValues<Enumeration>::values;
    const auto found = std::find(values.begin(), values.end(), text);
    if (found == values.end()) return std::nullopt;
    return static_cast<Enumeration>(found - values.begin());
}

}  // namespace merovanta
