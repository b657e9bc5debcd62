#pragma once

#include <memory>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessage.h"
#include "General/Panoptra/Network/Message/Bidirectional/ConsentDialog.h"
#include "General/Panoptra/Network/Message/Bidirectional/Drawings.h"
#include "General/Panoptra/UIStrings.h"

namespace merovanta {

/// Does what the agent's messages ask for. Thread: main.
class BidirectionalMessageHandler {
 public:
    BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                                std::shared_ptr<UIStrings> uiStrings);

    void handle(BidirectionalMessage message) const;

 private:
    void closeSession() const;
    static void startSession();

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<Drawings> mDrawings = std::make_shared<Drawings>();
    std::shared_ptr<ConsentDialog> mConsentDialog;
};

}  // namespace merovanta
