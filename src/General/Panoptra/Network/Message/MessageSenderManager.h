#pragma once

#include <memory>
#include <utility>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/HealthCheck.h"
#include "General/Panoptra/Network/Message/WebSocket/WebSocketMessageSender.h"
#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"

namespace merovanta {

/// Holds the transports; the session controller decides between them.
struct MessageSenderManager {
    MessageSenderManager(std::shared_ptr<WebSocketMessageSender> webSocket,
                         std::shared_ptr<XhrMessageSender> xhr, std::shared_ptr<HealthCheck> health,
                         std::shared_ptr<ApplicationConfigWrapper> wrapper)
        : webSocketSender(std::move(webSocket)),
          xhrSender(std::move(xhr)),
          applicationConfig(std::move(wrapper)),
          healthCheck(std::move(health)) {}

    /// For sessions whose host prefers it, unless the service vetoes it or it does not open.
    std::shared_ptr<WebSocketMessageSender> webSocketSender;
    std::shared_ptr<XhrMessageSender> xhrSender;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<HealthCheck> healthCheck;
};

}  // namespace merovanta
