#pragma once

#include <memory>
#include <utility>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"

namespace merovanta {

/// Holds the transports; the session controller decides between them.
struct MessageSenderManager {
    MessageSenderManager(std::shared_ptr<XhrMessageSender> xhr,
                         std::shared_ptr<ApplicationConfigWrapper> wrapper)
        : xhrSender(std::move(xhr)), applicationConfig(std::move(wrapper)) {}

    std::shared_ptr<XhrMessageSender> xhrSender;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
};

}  // namespace merovanta
