#include "Router.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace merovanta::devservice {
namespace {

// Takes the first segment off a path that begins with "/".
std::string_view nextSegment(std::string_view& path) {
    path.remove_prefix(1);
    const std::string_view segment = path.substr(0, path.find('/'));
    path.remove_prefix(segment.size());
    return segment;
}

std::optional<std::vector<std::string>> match(std::string_view pattern, std::string_view path) {
    std::vector<std::string> wildcards;
    while (pattern.starts_with('/') && path.starts_with('/')) {
        const std::string_view expected = nextSegment(pattern);
        if (expected == "**") {
            wildcards.emplace_back(path.substr(1));
            return wildcards;
        }
        const std::string_view actual = nextSegment(path);
        if (expected == "*" && !actual.empty()) {
            wildcards.emplace_back(actual);
        } else if (expected != actual) {
            return std::nullopt;
        }
    }
    if (!pattern.empty() || !path.empty()) return std::nullopt;
    return wildcards;
}

}  // namespace

void Router::add(std::string method, std::string path, Handler handler, std::size_t bodyLimit) {
    routes_.push_back({std::move(method), std::move(path), std::move(handler), bodyLimit});
}

void Router::addWebSocket(std::string path, UpgradeHandler handler) {
    webSockets_.emplace_back(std::move(path), std::move(handler));
}

std::size_t Router::bodyLimit(const Request& request) const {
    for (const Route& route : routes_) {
        if (route.method == request.method && match(route.path, request.target.path)) return route.bodyLimit;
    }
    return kDefaultBodyLimit;
}

Response Router::dispatch(Request& request) const {
    std::string allowed;
    for (const Route& route : routes_) {
        auto wildcards = match(route.path, request.target.path);
        if (!wildcards) continue;
        if (route.method != request.method) {
            allowed += (allowed.empty() ? "" : ", ") + route.method;
            continue;
        }
        request.wildcards = std::move(*wildcards);
        try {
            return route.handler(request);
        } catch (const std::exception& exception) {
            return Response::error(500, exception.what());
        }
    }
    if (allowed.empty()) return Response::error(404, "no such resource");
    Response response = Response::error(405, "method not allowed");
    response.headers.emplace_back("Allow", allowed);
    return response;
}

const Router::UpgradeHandler* Router::webSocket(const std::string& path) const {
    const auto found = std::find_if(webSockets_.begin(), webSockets_.end(),
                                    [&](const auto& item) { return item.first == path; });
    return found == webSockets_.end() ? nullptr : &found->second;
}

}  // namespace merovanta::devservice
