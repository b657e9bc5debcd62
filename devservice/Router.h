#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Request.h"
#include "Response.h"

namespace merovanta::devservice {

struct Upgrade;

/// Maps methods and paths to handlers. In a route's path, "*" stands for one segment, and "**" at its end
/// for all the rest, which may be empty.
class Router {
 public:
    using Handler = std::function<Response(const Request&)>;
    /// Takes the connection over, or answers why not.
    using UpgradeHandler = std::function<std::optional<Response>(Upgrade&)>;

    static constexpr std::size_t kDefaultBodyLimit = 256U << 10U;

    void add(std::string method, std::string path, Handler handler,
             std::size_t bodyLimit = kDefaultBodyLimit);
    void addWebSocket(std::string path, UpgradeHandler handler);

    /// How large a body the request's route takes.
    std::size_t bodyLimit(const Request& request) const;

    /// Calls the route's handler; 404 for an unknown path, 405 for an unknown method on a known one, 500 when
    /// the handler threw.
    Response dispatch(Request& request) const;

    /// The WebSocket handler of a path, or null.
    const UpgradeHandler* webSocket(const std::string& path) const;

 private:
    struct Route {
        std::string method;
        std::string path;
        Handler handler;
        std::size_t bodyLimit;
    };

    std::vector<Route> routes_;
    std::vector<std::pair<std::string, UpgradeHandler>> webSockets_;
};

}  // namespace merovanta::devservice
