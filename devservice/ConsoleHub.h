#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Faults.h"
#include "InitReply.h"
#include "Response.h"
#include "VisitorObserver.h"

namespace merovanta::devservice {

class ConsoleSession;
class PresenceRegistry;
class VisitorRegistry;
struct Upgrade;

/// The open console pages: opens their WebSockets and tells each what has changed.
class ConsoleHub : public VisitorObserver {
 public:
    static constexpr std::size_t kMaxSessions = 16;

    ConsoleHub(const InitReply& initReply, const Faults& faults) : initReply_(initReply), faults_(faults) {}

    /// To be called once before the first session; the registries themselves report to the hub.
    void attach(VisitorRegistry& visitors, const PresenceRegistry& presences) {
        visitors_ = &visitors;
        presences_ = &presences;
    }

    /// Takes the connection over, or answers why not.
    std::optional<Response> open(Upgrade& upgrade);

    /// The initialisation reply or the faults.
    void settingsChanged();
    /// Sends the whole list with fresh figures; to be called about once a second.
    void visitorsChanged();

    void visitorChanged(const Visitor& visitor) override;
    void frameArrived(const Visitor& visitor) override;
    void visitorRemoved(const Visitor& visitor) override;

 private:
    void forEach(const std::function<void(ConsoleSession&)>& action);

    const InitReply& initReply_;
    const Faults& faults_;
    VisitorRegistry* visitors_ = nullptr;
    const PresenceRegistry* presences_ = nullptr;
    std::vector<std::weak_ptr<ConsoleSession>> sessions_;
};

}  // namespace merovanta::devservice
