#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "OriginPolicy.h"
#include "Router.h"

namespace merovanta::devservice {

/// Adds routes that answer 403 unless the policy allows the request.
class GuardedRoutes {
 public:
    GuardedRoutes(Router& router, OriginPolicy policy) : router_(router), policy_(std::move(policy)) {}

    void add(const char* method, const std::string& path, Router::Handler handler,
             std::size_t bodyLimit = Router::kDefaultBodyLimit);
    void addWebSocket(const std::string& path, Router::UpgradeHandler handler);

 private:
    Router& router_;
    OriginPolicy policy_;
};

}  // namespace merovanta::devservice
