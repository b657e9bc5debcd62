#include "General/DebugPrint.h"

#include <cstdio>
#include <string>

namespace merovanta {

namespace {

constexpr std::size_t maximumText = 4096;

void appendEscaped(std::string& line, char character) {
    switch (character) {
        case '"':
        case '\\':
            line += {'\\', character};
            return;
        case '\n':
            line += "\\n";
            return;
        case '\r':
            line += "\\r";
            return;
        case '\t':
            line += "\\t";
            return;
        default:
            break;
    }
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7F) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u{%X}", static_cast<unsigned>(byte));
        line += escape;
    } else {
        line += character;
    }
}

}  // namespace

void debugPrint(std::string_view text) {
    std::string line = "\"";
    for (const char character : text.substr(0, maximumText))
        appendEscaped(line, character);
    line += text.size() > maximumText ? "…\"\n" : "\"\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

}  // namespace merovanta
