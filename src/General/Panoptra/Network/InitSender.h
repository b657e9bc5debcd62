#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Network/MonitoringConfigDTO.h"
#include "General/Result.h"

namespace merovanta {

/// Tells the service who and where the visitor is, and receives what decides on the session. Thread: main.
class InitSender {
 public:
    /// The service's answer, nothing if it answered without a body, or why there is none.
    using Reply = Result<std::optional<MonitoringConfigDTO>>;
    /// Called once: inside the call if nothing could be sent, else on a thread of the HTTP session's.
    using Completion = std::function<void(Reply)>;

    InitSender(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
               std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// The page name is that of the screen in front.
    void sendInit(const std::string& pageName, bool force, Completion completion) const;

 private:
    [[nodiscard]] Result<std::string> encodeRequest(const std::string& pageName, bool force) const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
};

}  // namespace merovanta
