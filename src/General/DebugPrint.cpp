#include "General/DebugPrint.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "General/ControlCharacters.h"
#include "General/LogDestination.h"

namespace merovanta {

namespace {

constexpr std::size_t maximumText = 4096;

std::string_view beginningOf(std::string_view text) {
    std::size_t size = std::min(text.size(), maximumText);
    const auto isInCharacter = [&] {
        return size > 0 && size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80;
    };
    while (isInCharacter())
        --size;
    return text.substr(0, size);
}

void appendEscape(std::string& line, std::string_view control) {
    if (control == "\n" || control == "\r" || control == "\t") {
        line += control == "\n" ? "\\n" : control == "\r" ? "\\r" : "\\t";
        return;
    }
    for (const char character : control) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(character)));
        line += escape;
    }
}

}  // namespace

void debugPrint(std::string_view text, Log::Source source) {
    std::string line = "\"";
    for (std::string_view rest = beginningOf(text); !rest.empty();) {
        const std::size_t control = controlCharacterSize(rest);
        if (control > 0) {
            appendEscape(line, rest.substr(0, control));
        } else {
            if (rest.front() == '"' || rest.front() == '\\') line += '\\';
            line += rest.front();
        }
        rest.remove_prefix(std::max(control, std::size_t{1}));
    }
    line += text.size() > maximumText ? "…\"\n" : "\"\n";
    LogDestination::write(LogLevel::debug, source.name(), std::string_view(line).substr(0, line.size() - 1),
                          line);
}

}  // namespace merovanta
