#pragma once

#include <Merovanta/MerovantaLog.h>

#include <string_view>

namespace merovanta {

/// Where log lines and debug prints go: to standard output, to the host's sink, or to both. Any thread.
class LogDestination {
 public:
    LogDestination() = delete;

    /// An empty sink means standard output alone.
    static void set(MerovantaLog::Sink sink, MerovantaLog::StandardOutput standardOutput);

    /// Writes the line, which ends with a line feed, to standard output unless that is silent, and hands the
    /// text to the sink, if there is one.
    static void write(LogLevel level, std::string_view source, std::string_view text, std::string_view line);
};

}  // namespace merovanta
