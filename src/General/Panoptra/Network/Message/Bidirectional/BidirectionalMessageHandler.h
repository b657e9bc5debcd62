#pragma once

#include <memory>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessage.h"
#include "General/Panoptra/UIStrings.h"

namespace merovanta {

/// Does what the agent's messages ask for: faster polling and the start of a session. Thread: main.
class BidirectionalMessageHandler {
 public:
    BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                                std::shared_ptr<UIStrings> uiStrings);

    void handle(const BidirectionalMessage& message) const;

 private:
    static void startSession();

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<UIStrings> uiStrings;
};

}  // namespace merovanta
