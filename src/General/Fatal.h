#pragma once

#include <source_location>
#include <string_view>

namespace merovanta {

/// Ends the process over a programming error: one line on standard error, then abort.
[[noreturn]] void fatalError(std::string_view message,
                             const std::source_location& where = std::source_location::current());

}  // namespace merovanta
