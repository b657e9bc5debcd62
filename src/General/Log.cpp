#include "General/Log.h"

#include <algorithm>
#include <string>

#include "General/ControlCharacters.h"
#include "General/LogDestination.h"

namespace merovanta {

namespace {

std::string_view baseName(std::string_view path) {
    if (const auto slash = path.find_last_of('/'); slash != std::string_view::npos)
        path.remove_prefix(slash + 1);
    return path.substr(0, path.find_last_of('.'));
}

void write(LogLevel level, std::string_view prefix, std::string_view message, Log::Source source) {
    std::string line;
    line.append(prefix).append(source.name()).append(": ");
    const std::size_t begin = line.size();
    // Texts from outside must not be able to forge a second line.
    while (!message.empty()) {
        const std::size_t control = message.front() == '\t' ? 0 : controlCharacterSize(message);
        line += control > 0 ? ' ' : message.front();
        message.remove_prefix(std::max(control, std::size_t{1}));
    }
    const std::size_t size = line.size() - begin;
    line += '\n';
    LogDestination::write(level, source.name(), std::string_view(line).substr(begin, size), line);
}

}  // namespace

Log::Source::Source(const std::source_location& location) : mName(baseName(location.file_name())) {}

void Log::debug(std::string_view message, Source source) {
    write(LogLevel::debug, "[DEBUG] ", message, source);
}

void Log::warning(std::string_view message, Source source) {
    write(LogLevel::warning, "[WARNING] ", message, source);
}

void Log::error(std::string_view message, Source source) {
    write(LogLevel::error, "[ERROR] ", message, source);
}

}  // namespace merovanta
