#pragma once

#include <string>

#include "General/Panoptra/ApplicationConfig.h"

namespace merovanta {

/// Builds the address of the polled stream.
class XhrSender {
 public:
    XhrSender() = delete;

    /// The values are inserted as they are, absent ones as empty texts.
    [[nodiscard]] static std::string endpointUrl(const std::string& url, const ApplicationConfig& config);
};

}  // namespace merovanta
