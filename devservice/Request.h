#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Target.h"

namespace merovanta::devservice {

/// One HTTP request as the handlers see it, independent of the HTTP library.
struct Request {
    std::string method;
    std::string rawTarget;
    Target target;
    /// What stood in the place of each "*" of the route's path.
    std::vector<std::string> wildcards;
    std::string host;
    std::string origin;
    std::string contentType;
    /// The header Cookie.
    std::string cookies;
    std::string authorization;
    std::string acceptEncoding;
    std::string ifNoneMatch;
    /// The header X-QD-SSID.
    std::string session;
    std::string remoteAddress;
    bool encrypted = false;
    /// Valid during the handler's call.
    std::string_view body;
};

}  // namespace merovanta::devservice
