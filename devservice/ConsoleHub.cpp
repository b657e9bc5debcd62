#include "ConsoleHub.h"

#include "ConsoleSession.h"
#include "Upgrade.h"
#include "Visitor.h"

namespace merovanta::devservice {

std::optional<Response> ConsoleHub::open(Upgrade& upgrade) {
    std::erase_if(sessions_, [](const auto& session) { return session.expired(); });
    if (sessions_.size() >= kMaxSessions) return Response::error(503, "too many consoles are open");
    auto session = std::make_shared<ConsoleSession>(std::move(upgrade.stream), upgrade.slot, *sources_);
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

void ConsoleHub::visitorChanged(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.visitorChanged(visitor.number()); });
}

void ConsoleHub::frameArrived(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.frameArrived(visitor.number()); });
}

void ConsoleHub::visitorRemoved(const Visitor& visitor) {
    forEach([&](ConsoleSession& session) { session.visitorRemoved(visitor.number()); });
}

void ConsoleHub::forEach(const std::function<void(ConsoleSession&)>& action) {
    for (const auto& weak : sessions_) {
        if (const auto session = weak.lock()) action(*session);
    }
}

}  // namespace merovanta::devservice
