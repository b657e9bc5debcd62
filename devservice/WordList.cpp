#include "WordList.h"

#include <algorithm>

namespace merovanta::devservice {

WordList::WordList(std::string_view lines) {
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        add(line);
    }
}

bool WordList::add(std::string_view text) {
    if (text.empty() || text.size() > kMaxBytes - bytes_ || texts_.contains(text)) return false;
    bytes_ += text.size();
    texts_.emplace(text);
    return true;
}

std::string WordList::lines() const {
    std::string result;
    for (const std::string& text : texts_)
        result += (result.empty() ? "" : "\n") + text;
    return result;
}

}  // namespace merovanta::devservice
