#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessage.h"
#include "General/Panoptra/Network/Message/Bidirectional/ConsentDialog.h"
#include "General/Panoptra/Network/Message/Bidirectional/Drawings.h"
#include "General/Panoptra/UIStrings.h"
#include "Platform/Timer.h"

namespace merovanta {

/// Does what the agent's messages ask for. Thread: main.
class BidirectionalMessageHandler : public std::enable_shared_from_this<BidirectionalMessageHandler> {
 public:
    BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                                std::shared_ptr<UIStrings> uiStrings);

    /// Follows the messages behind those that still wait: one in each turn of the run loop, since what the
    /// host does on a tap may take long.
    void handle(std::vector<BidirectionalMessage> messages);

    void discardWaiting();

    /// The host has started a session, at the visitor's wish: the visitor may be asked for consent at once.
    void visitorStarts();

    /// There is no session any more for which consent could be asked.
    void sessionEnded();

 private:
    void handleNext();
    void handle(BidirectionalMessage message) const;
    void closeSession() const;
    static void startSession();

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::deque<BidirectionalMessage> mWaiting;
    std::unique_ptr<Timer> mNextTurn;
    std::shared_ptr<Drawings> mDrawings = std::make_shared<Drawings>();
    std::shared_ptr<ConsentDialog> mConsentDialog;
};

}  // namespace merovanta
