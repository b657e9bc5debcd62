#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Target.h"

namespace merovanta::devservice {

/// Which recordings are asked for. Everything in it is bounded and harmless, whatever the request held.
struct RecordingQuery {
    static constexpr std::int64_t kMostAtOnce = 200;

    /// In the language of the full-text search, empty for all: every word must be found, as the beginning of
    /// a word of the recording; "field:word" looks in one field only.
    std::string match;
    /// That they began in, in milliseconds since 1970.
    std::optional<std::int64_t> from, to;
    /// A condition of the index, "1" for none.
    std::string condition = "1";
    std::int64_t offset = 0, limit = 50;

    /// From the keys "q", "from", "to", "show", "offset" and "limit"; what is wrong there counts as missing.
    static RecordingQuery parse(const Target& target);
};

}  // namespace merovanta::devservice
