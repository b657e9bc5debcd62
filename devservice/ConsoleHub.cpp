#include "ConsoleHub.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "ConsoleSession.h"
#include "Upgrade.h"
#include "Visitor.h"

namespace merovanta::devservice {

using nlohmann::json;

std::optional<Response> ConsoleHub::open(Upgrade& upgrade) {
    std::erase_if(sessions_, [](const auto& session) { return session.expired(); });
    if (sessions_.size() >= kMaxSessions) return Response::error(503, "too many consoles are open");
    const auto agent = sources_->agents.identityOf(upgrade.request);
    auto session =
        std::make_shared<ConsoleSession>(std::move(upgrade.stream), upgrade.slot, *sources_, *this, agent.id);
    sessions_.push_back(session);
    session->start(std::move(upgrade.handshake));
    return std::nullopt;
}

void ConsoleHub::settingsChanged() {
    forEach([](ConsoleSession& session) { session.settingsChanged(); });
}

void ConsoleHub::visitorsChanged() {
    forEach([](ConsoleSession& session) { session.visitorsChanged(); });
}

void ConsoleHub::contactsChanged() {
    forEach([](ConsoleSession& session) { session.contactsChanged(); });
}

void ConsoleHub::agentsChanged() {
    forEach([](ConsoleSession& session) { session.agentsChanged(); });
}

json ConsoleHub::agents() const {
    std::map<std::string, std::set<std::string>> watched;
    forEach([&](const ConsoleSession& session) {
        if (!session.isOpen() || session.agent().empty()) return;
        auto& visitors = watched[session.agent()];
        if (session.watched() != 0) visitors.insert(std::to_string(session.watched()));
    });
    json agents = json::array();
    for (const auto& [id, visitors] : watched) {
        const auto* agent = sources_->agents.find(id);
        if (agent == nullptr) continue;
        agents.push_back(agent->toJson());
        agents.back()["watching"] = visitors;
    }
    return {{"agents", std::move(agents)},
            {"controls", sources_->controls.toJson()},
            {"signIn", sources_->agents.needsSignIn()}};
}

bool ConsoleHub::watches(const std::string& agent, std::uint32_t visitor) const {
    bool result = false;
    forEach([&](const ConsoleSession& session) {
        result = result || (session.isOpen() && session.agent() == agent && session.watched() == visitor);
    });
    return result;
}

void ConsoleHub::visitorChanged(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.visitorChanged(visitor.number()); });
}

void ConsoleHub::frameArrived(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.frameArrived(visitor.number()); });
}

void ConsoleHub::visitorRemoved(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.visitorRemoved(visitor.number()); });
    sources_->controls.forget(visitor.number());
}

void ConsoleHub::forEach(const std::function<void(ConsoleSession&)>& action) const {
    for (const auto& weak : sessions_) {
        if (const auto session = weak.lock()) action(*session);
    }
}

}  // namespace merovanta::devservice
