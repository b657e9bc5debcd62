#pragma once

#include <Merovanta/Export.h>

#include <source_location>
#include <string_view>

namespace merovanta {

/// The log: one line for each call, always, on standard output or wherever the host has it go. The line names
/// the calling source file, or whatever else it is to be known by. Any thread.
class MEROVANTA_INTERNAL Log {
 public:
    /// What a line comes from.
    class MEROVANTA_INTERNAL Source {
     public:
        // NOLINTNEXTLINE(google-explicit-constructor): the place of the call stands for itself.
        Source(const std::source_location& location);
        explicit Source(std::string_view name) : mName(name) {}

        [[nodiscard]] std::string_view name() const { return mName; }

     private:
        std::string_view mName;
    };

    Log() = delete;

    static void debug(std::string_view message, Source source = std::source_location::current());
    static void warning(std::string_view message, Source source = std::source_location::current());
    static void error(std::string_view message, Source source = std::source_location::current());
};

}  // namespace merovanta
