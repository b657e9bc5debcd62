#pragma once

#include "AgentRegistry.h"
#include "ConsoleHub.h"
#include "Controls.h"
#include "Faults.h"
#include "GuardedRoutes.h"
#include "InitReply.h"
#include "PageAssets.h"
#include "PresenceRegistry.h"
#include "VisitorRegistry.h"
#include "VisitorSockets.h"

namespace merovanta::devservice {

/// The console page and the JSON control API behind it.
class ConsoleApi {
 public:
    ConsoleApi(VisitorRegistry& visitors, PresenceRegistry& presences, const VisitorSockets& sockets,
               InitReply& initReply, Faults& faults, ConsoleHub& hub, const PageAssets& assets,
               AgentRegistry& agents, Controls& controls)
        : visitors_(visitors),
          presences_(presences),
          sockets_(sockets),
          initReply_(initReply),
          faults_(faults),
          hub_(hub),
          assets_(assets),
          agents_(agents),
          controls_(controls) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    void addVisitorRoutes(GuardedRoutes& routes);
    void addPresenceRoutes(GuardedRoutes& routes);
    void addFaultRoutes(GuardedRoutes& routes);

    Response changeSettings(const Request& request);
    Response queueMessage(Visitor& visitor, const Request& request);
    Response sendFrame(const Visitor& visitor, const Request& request);

    VisitorRegistry& visitors_;
    PresenceRegistry& presences_;
    const VisitorSockets& sockets_;
    InitReply& initReply_;
    Faults& faults_;
    ConsoleHub& hub_;
    const PageAssets& assets_;
    AgentRegistry& agents_;
    Controls& controls_;
};

}  // namespace merovanta::devservice
