#pragma once

#include <string_view>

namespace merovanta {

/// Writes a text to the debug output: one line on standard output, in quotes and with escapes, cut if it is
/// long. For what a page says and other matters of a developer's; the log is for the rest. Any thread.
void debugPrint(std::string_view text);

}  // namespace merovanta
