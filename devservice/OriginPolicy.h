#pragma once

#include <string>
#include <utility>

#include "Request.h"

namespace merovanta::devservice {

/// Keeps other web pages from reaching the console through the agent's browser: a foreign page sends its own
/// origin, and a foreign name that was pointed at this machine stands in the Host header.
class OriginPolicy {
 public:
    /// `host` is the name or address the service listens on.
    explicit OriginPolicy(std::string host) : host_(std::move(host)) {}

    /// The Host must be an address, "localhost" or the service's own name; an Origin, if any, must be that
    /// same host.
    bool allows(const Request& request) const;

 private:
    std::string host_;
};

}  // namespace merovanta::devservice
