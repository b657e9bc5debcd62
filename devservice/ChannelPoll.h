#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// One poll of the message channels: which of them the visitor's app listens on, and what it reports about
/// the visitor, if anything.
struct ChannelPoll {
    struct Status {
        std::string page, customerId, device;
        /// When the visitor joined, in milliseconds since 1970.
        std::optional<std::int64_t> joined;
    };

    std::set<std::string, std::less<>> channels;
    std::optional<Status> status;

    /// Nothing when the body is no poll at all. A message that cannot be understood is left out.
    static std::optional<ChannelPoll> parse(std::string_view body);
};

}  // namespace merovanta::devservice
