#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfig.h"

namespace merovanta {

/// The one shared configuration. Thread: main.
class ApplicationConfigWrapper {
 public:
    /// Begins with the packaged host names and an empty visit and session.
    ApplicationConfigWrapper();

    /// Gives the visit a new id, the identified user's or the device's visitor id, and the session id given
    /// or a new one. Nothing happens without a visit.
    void renewVisit(const std::optional<std::string>& sessionId);

    /// The running session's start in milliseconds since 1970; 0 if there is none.
    [[nodiscard]] std::int64_t startTime() const;

    ApplicationConfig config;
};

}  // namespace merovanta
