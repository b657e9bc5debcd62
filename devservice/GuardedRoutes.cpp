#include "GuardedRoutes.h"

#include <string_view>

#include "SignInApi.h"
#include "Upgrade.h"

namespace merovanta::devservice {
namespace {

Response unknown(const Request& request, const PageAssets& assets) {
    const std::string_view path = request.target.path;
    const bool isPage = request.method == "GET" && path.ends_with(".html");
    return isPage ? SignInApi::page(request, assets) : Response::error(401, "sign in first");
}

}  // namespace

GuardedRoutes::Guard GuardedRoutes::guard() const {
    return [policy = policy_, access = access_,
            assets = assets_](const Request& request) -> std::optional<Response> {
        if (!policy.allows(request)) return Response::error(403, "only the service's own pages may ask");
        if (access != nullptr && !access->admits(request)) return unknown(request, *assets);
        return std::nullopt;
    };
}

void GuardedRoutes::add(const char* method, const std::string& path, Router::Handler handler,
                        std::size_t bodyLimit) {
    const auto guarded = [refuse = guard(), handler = std::move(handler)](const Request& request) {
        auto refusal = refuse(request);
        return refusal ? std::move(*refusal) : handler(request);
    };
    router_.add(method, path, guarded, bodyLimit);
}

void GuardedRoutes::addWebSocket(const std::string& path, Router::UpgradeHandler handler) {
    router_.addWebSocket(
        path, [refuse = guard(), handler = std::move(handler)](Upgrade& upgrade) -> std::optional<Response> {
            auto refusal = refuse(upgrade.request);
            return refusal ? std::move(refusal) : handler(upgrade);
        });
}

}  // namespace merovanta::devservice
