#include "AgentMessages.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxMessages = 64;
constexpr std::size_t kMaxBytes = 8U << 20U;

const json& member(const json& object, const char* key) {
    static const json none;
    if (!object.is_object()) return none;
    const auto found = object.find(key);
    return found == object.end() ? none : *found;
}

}  // namespace

std::optional<std::uint64_t> AgentMessages::queue(const json& message, Moment now) {
    std::string text = toText(message);
    if (messages_.size() >= kMaxMessages || text.size() > kMaxBytes - bytes_) return std::nullopt;
    bytes_ += text.size();
    messages_.push_back(std::move(text));
    const json& configuration = member(message, "co");
    if (member(message, "a") == "c") askedToClose_ = true;
    if (member(configuration, "b").is_boolean()) askedForFasterPolling_ = true;
    if (member(configuration, "opt") == true) {
        consent_ = Answer::Waiting;
        consentAt_ = now;
    }
    return ++queued_;
}

std::optional<std::string> AgentMessages::take() {
    if (messages_.empty()) return std::nullopt;
    std::string result = std::move(messages_.front());
    messages_.pop_front();
    bytes_ -= result.size();
    return result;
}

void AgentMessages::clear() {
    messages_.clear();
    bytes_ = 0;
    askedToClose_ = askedForFasterPolling_ = false;
    if (consent_ == Answer::Waiting) consent_ = Answer::NotAsked;
}

bool AgentMessages::answered(Answer answer, Moment now) {
    if (consent_ != Answer::Waiting) return false;
    consent_ = answer;
    consentAt_ = now;
    return true;
}

json AgentMessages::consent() const {
    if (consent_ == Answer::NotAsked) return {};
    const char* const state = consent_ == Answer::Waiting    ? "waiting"
                              : consent_ == Answer::Accepted ? "accepted"
                                                             : "declined";
    return {{"state", state}, {"at", consentAt_.time_since_epoch().count()}};
}

}  // namespace merovanta::devservice
