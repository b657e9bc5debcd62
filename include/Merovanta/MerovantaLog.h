#pragma once

#include <Merovanta/Export.h>

#include <chrono>
#include <functional>
#include <string_view>

namespace merovanta {

enum class LogLevel {
    debug,
    warning,
    /// Something that was asked for was not done.
    error,
};

/// One line of the library's log. The texts are valid during the call only.
struct LogLine {
    LogLevel level;  ///< How much it matters.
    /// The part of the library that speaks, for example "Panoptra".
    std::string_view source;
    /// UTF-8, without line feeds and other control characters but tabs. Holds ids, host names and addresses,
    /// the names of pages and the places of taps.
    std::string_view text;
    std::chrono::system_clock::time_point time;  ///< When it was said.
};

/// Where the log goes. Without a sink it goes to standard output, one line each: the level ("[DEBUG] ",
/// "[WARNING] ", "[ERROR] "), the source, ": " and the text. The one instance is Merovanta::log().
///
/// Thread: any.
class MEROVANTA_EXPORT MerovantaLog {
 public:
    /// Called on whichever thread has something to say, also on several at once, in the middle of what the
    /// library does there: it should be quick, and must not throw. It may call the library, if on the right
    /// thread; what the library logs inside the call does not come to the sink.
    using Sink = std::function<void(const LogLine&)>;

    /// Whether standard output gets the lines as well.
    enum class StandardOutput { goesOn, isSilent };

    MerovantaLog(const MerovantaLog&) = delete;
    MerovantaLog& operator=(const MerovantaLog&) = delete;

    /// Hands every line to this sink from now on, in place of an earlier one; an empty sink gives all back to
    /// standard output alone. Another thread that is logging just now may still call the earlier sink, which
    /// is destroyed after that call, on that thread.
    void setSink(Sink sink, StandardOutput standardOutput);

 private:
    friend class Merovanta;
    MerovantaLog() = default;
};

}  // namespace merovanta
