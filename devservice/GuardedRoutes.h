#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "ConsoleAccess.h"
#include "OriginPolicy.h"
#include "PageAssets.h"
#include "Router.h"

namespace merovanta::devservice {

/// Adds routes that answer 403 unless the policy allows the request, and those of the console 401 besides,
/// with a page to sign in on where a page was asked for, unless its access admits whoever asks.
class GuardedRoutes {
 public:
    GuardedRoutes(Router& router, OriginPolicy policy) : router_(router), policy_(std::move(policy)) {}
    /// `access` and `assets` must outlive the router.
    GuardedRoutes(Router& router, OriginPolicy policy, ConsoleAccess& access, const PageAssets& assets)
        : router_(router), policy_(std::move(policy)), access_(&access), assets_(&assets) {}

    void add(const char* method, const std::string& path, Router::Handler handler,
             std::size_t bodyLimit = Router::kDefaultBodyLimit);
    void addWebSocket(const std::string& path, Router::UpgradeHandler handler);

 private:
    /// Why a request is refused; nothing when it is not.
    using Guard = std::function<std::optional<Response>(const Request&)>;
    Guard guard() const;

    Router& router_;
    OriginPolicy policy_;
    ConsoleAccess* access_ = nullptr;
    const PageAssets* assets_ = nullptr;
};

}  // namespace merovanta::devservice
