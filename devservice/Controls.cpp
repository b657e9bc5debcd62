#include "Controls.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace merovanta::devservice {

bool Controls::claim(std::uint32_t visitor, const std::string& agent, Moment now) {
    const auto [found, isNew] = controls_.try_emplace(visitor, Control{agent, now, {}, {}});
    if (isNew) changed_();
    return found->second.holder == agent;
}

std::string Controls::holder(std::uint32_t visitor) const {
    const auto found = controls_.find(visitor);
    return found == controls_.end() ? "" : found->second.holder;
}

void Controls::ask(std::uint32_t visitor, const std::string& agent, Moment now) {
    if (claim(visitor, agent, now)) return;
    Control& control = controls_.at(visitor);
    // One question at a time, and an older one is not put off by being put again.
    if (!control.asker.empty()) return;
    control.asker = agent;
    control.askedAt = now;
    changed_();
}

void Controls::answer(std::uint32_t visitor, const std::string& agent, bool gives, Moment now) {
    const auto found = controls_.find(visitor);
    if (found == controls_.end() || found->second.holder != agent || found->second.asker.empty()) return;
    if (gives) hand(found->second, now);
    found->second.asker.clear();
    changed_();
}

void Controls::hand(Control& control, Moment now) {
    control.holder = std::exchange(control.asker, {});
    control.watchedAt = now;
}

void Controls::expire(Moment now, const std::function<bool(const std::string&, std::uint32_t)>& watches) {
    bool changes = false;
    for (auto item = controls_.begin(); item != controls_.end();) {
        auto& [visitor, control] = *item;
        if (watches(control.holder, visitor)) control.watchedAt = now;
        if (!control.asker.empty() && !watches(control.asker, visitor)) {
            control.asker.clear();
            changes = true;
        }
        const bool isAway = now - control.watchedAt > kAwayTime;
        if (!control.asker.empty() && (isAway || now - control.askedAt > kAnswerTime)) {
            hand(control, now);
            changes = true;
        } else if (isAway) {
            item = controls_.erase(item);
            changes = true;
            continue;
        }
        ++item;
    }
    if (changes) changed_();
}

void Controls::forget(std::uint32_t visitor) {
    if (controls_.erase(visitor) > 0) changed_();
}

nlohmann::json Controls::toJson() const {
    nlohmann::json result = nlohmann::json::object();
    for (const auto& [visitor, control] : controls_) {
        const bool asked = !control.asker.empty();
        result[std::to_string(visitor)] = {
            {"holder", control.holder},
            {"asker", asked ? nlohmann::json(control.asker) : nlohmann::json()},
            {"askedAt",
             asked ? nlohmann::json(control.askedAt.time_since_epoch().count()) : nlohmann::json()}};
    }
    return result;
}

}  // namespace merovanta::devservice
