#pragma once

#include <source_location>
#include <string_view>

namespace merovanta {

/// The console log: one line on standard output for each call, always. The line names the calling source
/// file. Any thread.
class Log {
 public:
    using Source = std::source_location;

    Log() = delete;

    static void debug(std::string_view message, const Source& source = Source::current());
    static void warning(std::string_view message, const Source& source = Source::current());
    static void error(std::string_view message, const Source& source = Source::current());
};

}  // namespace merovanta
