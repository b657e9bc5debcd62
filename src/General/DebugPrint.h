#pragma once

#include <string_view>

#include "General/Log.h"

namespace merovanta {

/// Writes a text to the debug output: one line, in quotes and with escapes, cut if it is long, on standard
/// output or as a line of the log's to the host's sink. For what a page says and other matters of a
/// developer's; the log is for the rest. Any thread.
void debugPrint(std::string_view text, Log::Source source = std::source_location::current());

}  // namespace merovanta
