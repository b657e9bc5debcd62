#pragma once

#include <cstdint>
#include <deque>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "Moment.h"

namespace merovanta::devservice {

/// One line of a visitor's history.
struct TimelineEntry {
    std::uint64_t sequence = 0;
    Moment at;
    /// Milliseconds since the start of the session, as the visitor's message says.
    std::optional<std::uint64_t> sessionTime;
    /// "init", "connect", "disconnect", "end", "page", "tap", "tag", "userTag", "picture", "activity",
    /// "consent", "agent" or "warning".
    std::string kind;
    std::string text;
    /// What else the kind carries (coordinates, identity); null when nothing.
    nlohmann::json detail;

    nlohmann::json toJson() const;
};

/// The last entries of a visitor's history; the oldest make room for new ones.
class Timeline {
 public:
    static constexpr std::size_t kCapacity = 500;

    /// Numbers and keeps the entry; its text is bounded here.
    void add(TimelineEntry entry);

    /// Sequence number of the newest entry, 0 when there is none.
    std::uint64_t lastSequence() const { return lastSequence_; }

    /// The entries after a sequence number, oldest first.
    nlohmann::json entriesAfter(std::uint64_t sequence) const;

 private:
    std::deque<TimelineEntry> entries_;
    std::uint64_t lastSequence_ = 0;
};

}  // namespace merovanta::devservice
