#include "LineMeter.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

namespace merovanta::devservice {
namespace {

constexpr std::chrono::seconds kGapWindow{10};
constexpr std::chrono::seconds kLossWindow{60};
constexpr std::size_t kMaxPings = 128;
constexpr std::uint64_t kPingMilliseconds = 1000;
// The app tells whole seconds, so a line without losses may seem to lack one.
constexpr std::size_t kRounding = 1;

}  // namespace

void LineMeter::ping(Moment now, std::optional<std::uint64_t> sessionTime) {
    pings_.push_back({now, sessionTime});
    while (pings_.size() > kMaxPings || now - pings_.front().at > kLossWindow)
        pings_.pop_front();
}

nlohmann::json LineMeter::toJson(Moment now) const {
    std::vector<std::int64_t> gaps;
    const Ping* previous = nullptr;
    for (const Ping& ping : pings_) {
        // Pings that waited for a request to end arrive together.
        const bool together = previous != nullptr && ping.at == previous->at;
        if (previous != nullptr && !together && now - ping.at <= kGapWindow)
            gaps.push_back((ping.at - previous->at).count());
        previous = &ping;
    }
    nlohmann::json result = {{"pingGap", nullptr}, {"longestGap", nullptr}, {"missedPings", missed()}};
    if (gaps.empty()) return result;
    std::sort(gaps.begin(), gaps.end());
    result["pingGap"] = gaps[gaps.size() / 2];
    result["longestGap"] = gaps.back();
    return result;
}

std::size_t LineMeter::missed() const {
    if (pings_.size() < 2 || !pings_.front().sessionTime || !pings_.back().sessionTime) return 0;
    const std::uint64_t first = *pings_.front().sessionTime, last = *pings_.back().sessionTime;
    if (last <= first || last - first > kPingMilliseconds * 10 * kMaxPings) return 0;
    const std::size_t expected = (last - first) / kPingMilliseconds + 1;
    return expected - std::min(expected, pings_.size() + kRounding);
}

}  // namespace merovanta::devservice
