#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "Moment.h"

namespace merovanta::devservice {

/// The agents' messages that wait for one visitor's app, bounded by number and by bytes, and what they have
/// asked of it so far.
class AgentMessages {
 public:
    enum class Answer { NotAsked, Waiting, Accepted, Declined };

    /// Keeps the message for the app. Returns its number, counted from 1, or nothing when too many wait.
    std::optional<std::uint64_t> queue(const nlohmann::json& message, Moment now);
    /// The oldest message that waits, as JSON text; nothing when none does.
    std::optional<std::string> take();
    /// The app is gone: what waits, and whether it was asked for faster polling, is forgotten.
    void clear();

    std::size_t waiting() const { return messages_.size(); }
    /// The number of the last message that was taken.
    std::uint64_t delivered() const { return queued_ - messages_.size(); }
    bool askedToClose() const { return askedToClose_; }
    bool askedForFasterPolling() const { return askedForFasterPolling_; }

    /// The visitor answered the question for consent; false when none was put.
    bool answered(Answer answer, Moment now);
    /// "state" ("waiting", "accepted", "declined") and "at" of that question, null when it was not put.
    nlohmann::json consent() const;

 private:
    std::deque<std::string> messages_;
    std::size_t bytes_ = 0;
    std::uint64_t queued_ = 0;
    bool askedToClose_ = false, askedForFasterPolling_ = false;
    Answer consent_ = Answer::NotAsked;
    Moment consentAt_{};
};

}  // namespace merovanta::devservice
