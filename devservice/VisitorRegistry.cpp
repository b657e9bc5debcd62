#include "VisitorRegistry.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {
namespace {

std::pair<std::string, std::string> key(const std::string& tenantId, const std::string& sessionId) {
    return {boundedText(tenantId, kMaxIdentifierBytes), boundedText(sessionId, kMaxIdentifierBytes)};
}

int importance(const Visitor& visitor) {
    if (visitor.state() == Visitor::State::Ended) return 0;
    return visitor.counters().posts + visitor.counters().socketFrames == 0 ? 1 : 2;
}

}  // namespace

VisitorRegistry::VisitorRegistry(VisitorObserver& observer, std::size_t capacity)
    : observer_(observer), capacity_(capacity) {}

Visitor& VisitorRegistry::obtain(const std::string& tenantId, const std::string& sessionId, Moment now) {
    if (Visitor* known = find(tenantId, sessionId)) return *known;
    if (visitors_.size() >= capacity_) forgetOne();
    const auto session = key(tenantId, sessionId);
    const std::uint32_t number = ++lastNumber_;
    numbers_.emplace(session, number);
    auto visitor = std::make_unique<Visitor>(number, session.first, session.second, now, observer_);
    return *visitors_.emplace(number, std::move(visitor)).first->second;
}

Visitor* VisitorRegistry::find(const std::string& tenantId, const std::string& sessionId) {
    const auto found = numbers_.find(key(tenantId, sessionId));
    return found == numbers_.end() ? nullptr : visitors_.at(found->second).get();
}

Visitor* VisitorRegistry::find(std::string_view number) {
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size()) return nullptr;
    const auto found = visitors_.find(value);
    return found == visitors_.end() ? nullptr : found->second.get();
}

const Visitor* VisitorRegistry::findToShow(std::string_view sessionId) const {
    const Visitor* latest = nullptr;
    for (const auto& [number, visitor] : visitors_) {
        if (visitor->sessionId() == sessionId) return visitor.get();
        const bool isBetter = latest == nullptr || latest->state() == Visitor::State::Ended;
        if (visitor->state() != Visitor::State::Ended || isBetter) latest = visitor.get();
    }
    return latest;
}

void VisitorRegistry::hasBegun(const Visitor& visitor) {
    for (const auto& [number, other] : visitors_) {
        const bool same = !visitor.visitorId().empty() && other->tenantId() == visitor.tenantId() &&
                          other->visitorId() == visitor.visitorId();
        if (same && number != visitor.number()) other->continued();
    }
}

void VisitorRegistry::expire(Moment now) {
    for (const auto& [number, visitor] : visitors_)
        visitor->expire(now);
}

nlohmann::json VisitorRegistry::summaries(Moment now) const {
    nlohmann::json result = nlohmann::json::array();
    for (const auto& [number, visitor] : visitors_)
        result.push_back(visitor->summary(now));
    return result;
}

void VisitorRegistry::forgetOne() {
    const auto rank = [](const Visitors::value_type& item) {
        return std::pair(importance(*item.second), item.second->lastSeen());
    };
    const auto victim = std::min_element(visitors_.begin(), visitors_.end(),
                                         [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    if (victim == visitors_.end()) return;
    observer_.visitorRemoved(*victim->second);
    std::erase_if(numbers_, [&](const auto& item) { return item.second == victim->first; });
    visitors_.erase(victim);
}

}  // namespace merovanta::devservice
