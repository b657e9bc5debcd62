#include "GuardedRoutes.h"

#include "Upgrade.h"

namespace merovanta::devservice {
namespace {

Response foreign() {
    return Response::error(403, "only the service's own pages may ask");
}

}  // namespace

void GuardedRoutes::add(const char* method, const std::string& path, Router::Handler handler,
                        std::size_t bodyLimit) {
    const auto guarded = [policy = policy_, handler = std::move(handler)](const Request& request) {
        return policy.allows(request) ? handler(request) : foreign();
    };
    router_.add(method, path, guarded, bodyLimit);
}

void GuardedRoutes::addWebSocket(const std::string& path, Router::UpgradeHandler handler) {
    router_.addWebSocket(
        path, [policy = policy_, handler = std::move(handler)](Upgrade& upgrade) -> std::optional<Response> {
            return policy.allows(upgrade.request) ? handler(upgrade) : foreign();
        });
}

}  // namespace merovanta::devservice
