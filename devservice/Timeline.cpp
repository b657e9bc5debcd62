#include "Timeline.h"

#include <utility>

#include "Text.h"

namespace merovanta::devservice {
namespace {
constexpr std::size_t kMaxTextBytes = 512;
}

nlohmann::json TimelineEntry::toJson() const {
    nlohmann::json json = {
        {"seq", sequence}, {"at", at.time_since_epoch().count()}, {"kind", kind}, {"text", text}};
    json["time"] = sessionTime ? nlohmann::json(*sessionTime) : nlohmann::json();
    if (!detail.is_null()) json["detail"] = detail;
    return json;
}

void Timeline::add(TimelineEntry entry) {
    entry.sequence = ++lastSequence_;
    entry.text = boundedText(entry.text, kMaxTextBytes);
    if (entries_.size() == kCapacity) entries_.pop_front();
    entries_.push_back(std::move(entry));
}

nlohmann::json Timeline::entriesAfter(std::uint64_t sequence) const {
    nlohmann::json result = nlohmann::json::array();
    for (const TimelineEntry& entry : entries_) {
        if (entry.sequence > sequence) result.push_back(entry.toJson());
    }
    return result;
}

}  // namespace merovanta::devservice
