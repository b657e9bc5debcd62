#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Network/VisitorActivityLogType.h"
#include "General/StringError.h"

namespace merovanta {

/// Reports to the service's log what becomes of the visitor's session. Nothing is retried. Thread: main; the
/// completions, which receive nothing on success, as those of MerovantaAPI.
class MonitoringSender {
 public:
    using Completion = std::function<void(const std::optional<StringError>&)>;

    /// A completion that only logs a failure: the session goes on whatever becomes of the entry.
    [[nodiscard]] static Completion logged(const char* event);

    explicit MonitoringSender(std::shared_ptr<MerovantaAPI> merovantaAPI);

    void logCoBrowsingStart(Completion completion) const;
    void logCoBrowsingStop(Completion completion) const;
    void logCoBrowsingAccept(Completion completion) const;

 private:
    void send(VisitorActivityLogType type, Completion completion) const;

    std::shared_ptr<MerovantaAPI> merovantaAPI;
};

}  // namespace merovanta
