#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "Moment.h"

namespace merovanta::devservice {

/// How good a visitor's line is, as its pings tell. The app sends one a second, each with the session's time,
/// and by polling none while a request is under way: the gap between them is the round trip where that is
/// longer.
class LineMeter {
 public:
    /// A ping arrived that was sent at this time of its session, in milliseconds.
    void ping(Moment now, std::optional<std::uint64_t> sessionTime);
    /// The stream was opened anew: what was before tells nothing of this line.
    void restart() { pings_.clear(); }

    /// "pingGap" and "longestGap" of the last ten seconds in milliseconds, null before there are two pings,
    /// and "missedPings" of the last minute.
    nlohmann::json toJson(Moment now) const;

 private:
    struct Ping {
        Moment at;
        std::optional<std::uint64_t> sessionTime;
    };

    std::size_t missed() const;

    std::deque<Ping> pings_;
};

}  // namespace merovanta::devservice
