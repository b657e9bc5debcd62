#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace merovanta::devservice {

/// A file that the agent gives to a visitor, with the headers under which it is to be served.
struct SharedDocument {
    static constexpr std::size_t kMaxBytes = 16U << 20U;

    std::string name;
    std::string contentType;
    /// The header of that name; none when empty.
    std::string contentDisposition;
    std::string content;

    /// `form` says how the name stands in the header: "encoded" (quoted and percent-encoded, the usual one),
    /// "quoted" or "unquoted" (as it is, whatever it holds), "nameless" or "none". Returns what is wrong, if
    /// anything.
    static std::variant<SharedDocument, std::string> make(std::string name, std::string contentType,
                                                          std::string_view form, std::string_view content);
};

}  // namespace merovanta::devservice
