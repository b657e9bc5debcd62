#pragma once

#include "AgentRegistry.h"
#include "ConsoleHub.h"
#include "Controls.h"
#include "GuardedRoutes.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// The part of the control API that is about agents: who they are, and who of them acts for a visitor.
class AgentApi {
 public:
    AgentApi(AgentRegistry& agents, Controls& controls, VisitorRegistry& visitors, const ConsoleHub& hub)
        : agents_(agents), controls_(controls), visitors_(visitors), hub_(hub) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    Response rename(const Request& request);
    Response control(const Request& request);

    AgentRegistry& agents_;
    Controls& controls_;
    VisitorRegistry& visitors_;
    const ConsoleHub& hub_;
};

}  // namespace merovanta::devservice
