#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "ConsoleSources.h"
#include "Response.h"
#include "VisitorObserver.h"

namespace merovanta::devservice {

class ConsoleSession;
struct Upgrade;

/// The open console pages: opens their WebSockets and tells each what has changed.
class ConsoleHub : public VisitorObserver {
 public:
    static constexpr std::size_t kMaxSessions = 32;

    /// To be called once before the first session; the registries themselves report to the hub.
    void attach(const ConsoleSources& sources) { sources_ = std::make_unique<ConsoleSources>(sources); }

    /// Takes the connection over, or answers why not.
    std::optional<Response> open(Upgrade& upgrade);

    /// The initialisation reply or the faults.
    void settingsChanged();
    /// Sends the whole list with fresh figures; to be called about once a second.
    void visitorsChanged();
    /// Who the agents are, what they look at, or who acts.
    void agentsChanged();
    /// The agents whose pages are open, with the visitors they watch, and who acts for whom.
    nlohmann::json agents() const;
    bool watches(const std::string& agent, std::uint32_t visitor) const;
    /// Who somebody is, or a chat.
    void contactsChanged();

    void visitorChanged(const Visitor& visitor) override;
    void frameArrived(const Visitor& visitor) override;
    void visitorRemoved(const Visitor& visitor) override;

 private:
    void forEach(const std::function<void(ConsoleSession&)>& action) const;

    std::unique_ptr<ConsoleSources> sources_;
    std::vector<std::weak_ptr<ConsoleSession>> sessions_;
};

}  // namespace merovanta::devservice
