#pragma once

#include "ConsoleAssets.h"
#include "ConsoleHub.h"
#include "Faults.h"
#include "InitReply.h"
#include "OriginPolicy.h"
#include "PresenceRegistry.h"
#include "Router.h"
#include "VisitorRegistry.h"
#include "VisitorSockets.h"

namespace merovanta::devservice {

/// The console page and the JSON control API behind it. Every route checks who asks.
class ConsoleApi {
 public:
    ConsoleApi(VisitorRegistry& visitors, PresenceRegistry& presences, const VisitorSockets& sockets,
               InitReply& initReply, Faults& faults, ConsoleHub& hub, OriginPolicy policy,
               ConsoleAssets assets)
        : visitors_(visitors),
          presences_(presences),
          sockets_(sockets),
          initReply_(initReply),
          faults_(faults),
          hub_(hub),
          policy_(std::move(policy)),
          assets_(std::move(assets)) {}

    void addRoutes(Router& router);

 private:
    /// Adds a route that answers 403 unless the policy allows the request.
    void add(Router& router, const char* method, const std::string& path, Router::Handler handler,
             std::size_t bodyLimit = Router::kDefaultBodyLimit);
    void addVisitorRoutes(Router& router);
    void addPresenceRoutes(Router& router);
    void addFaultRoutes(Router& router);

    Response changeSettings(const Request& request);
    Response queueMessage(Visitor& visitor, const Request& request);
    Response sendFrame(const Visitor& visitor, const Request& request);

    VisitorRegistry& visitors_;
    PresenceRegistry& presences_;
    const VisitorSockets& sockets_;
    InitReply& initReply_;
    Faults& faults_;
    ConsoleHub& hub_;
    OriginPolicy policy_;
    ConsoleAssets assets_;
};

}  // namespace merovanta::devservice
