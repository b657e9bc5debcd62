#include "General/Log.h"

#include <cstdio>
#include <string>

namespace merovanta {

namespace {

std::string_view baseName(std::string_view path) {
    if (const auto slash = path.find_last_of('/'); slash != std::string_view::npos)
        path.remove_prefix(slash + 1);
    return path.substr(0, path.find_last_of('.'));
}

void write(std::string_view prefix, std::string_view message, const Log::Source& source) {
    std::string line;
    line.append(prefix).append(baseName(source.file_name())).append(": ");
    // Texts from outside must not be able to forge a second line.
    for (const char character : message) {
        const bool isControl = static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
        line += isControl && character != '\t' ? ' ' : character;
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

}  // namespace

void Log::debug(std::string_view message, const Source& source) {
    write("[DEBUG] ", message, source);
}

void Log::warning(std::string_view message, const Source& source) {
    write("[WARNING] ", message, source);
}

void Log::error(std::string_view message, const Source& source) {
    write("[ERROR] ", message, source);
}

}  // namespace merovanta
