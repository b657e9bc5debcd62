#pragma once

#include <cstddef>
#include <ostream>

#include "Request.h"

namespace merovanta::devservice {

/// Writes one line a request when enabled.
class RequestLog {
 public:
    RequestLog(std::ostream& out, bool enabled) : out_(out), enabled_(enabled) {}

    void write(const Request& request, std::size_t bodyBytes, unsigned status);

 private:
    std::ostream& out_;
    bool enabled_;
};

}  // namespace merovanta::devservice
