#include "ChannelPoll.h"

#include <charconv>

#include "JsonBody.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxChannels = 32;
constexpr std::size_t kMaxMessages = 64;
constexpr std::size_t kMaxTextBytes = 256;

// A number in text of the form "key=value&key=value".
std::optional<std::int64_t> numberIn(std::string_view parameters, std::string_view key) {
    while (!parameters.empty()) {
        const std::string_view item = parameters.substr(0, parameters.find('&'));
        parameters.remove_prefix(std::min(item.size() + 1, parameters.size()));
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos || item.substr(0, equals) != key) continue;
        std::int64_t value = 0;
        const char* const last = item.data() + item.size();
        const auto [end, error] = std::from_chars(item.data() + equals + 1, last, value);
        if (error == std::errc() && end == last) return value;
    }
    return std::nullopt;
}

std::optional<ChannelPoll::Status> statusOf(const json& message) {
    if (!message.is_object() || textMember(message, "c") != "S") return std::nullopt;
    const json payload = parseObject(textMember(message, "p"));
    if (payload.is_discarded()) return std::nullopt;
    return ChannelPoll::Status{boundedText(textMember(payload, "u"), kMaxTextBytes),
                               boundedText(textMember(payload, "cId"), kMaxTextBytes),
                               boundedText(textMember(payload, "dT"), kMaxTextBytes), std::nullopt};
}

}  // namespace

std::optional<ChannelPoll> ChannelPoll::parse(std::string_view body) {
    const json wrapper = parseObject(body);
    if (wrapper.is_discarded()) return std::nullopt;
    const json channels = wrapper.value("c", json());
    const json messages = wrapper.value("m", json());
    if (!channels.is_array() || channels.size() > kMaxChannels) return std::nullopt;
    if (!messages.is_array() || messages.size() > kMaxMessages) return std::nullopt;
    ChannelPoll poll;
    for (const json& channel : channels) {
        if (!channel.is_string()) return std::nullopt;
        poll.channels.insert(channel.get<std::string>());
    }
    for (const json& message : messages) {
        if (auto status = statusOf(message)) poll.status = std::move(status);
    }
    if (poll.status) poll.status->joined = numberIn(textMember(wrapper, "ad"), "joinedTimestamp");
    return poll;
}

}  // namespace merovanta::devservice
