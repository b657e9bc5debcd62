#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/Util/ClickUtil.h"

namespace merovanta {

BidirectionalMessageHandler::BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                                                         std::shared_ptr<UIStrings> strings)
    : applicationConfig(wrapper),
      mConsentDialog(std::make_shared<ConsentDialog>(std::move(wrapper), std::move(strings))) {}

void BidirectionalMessageHandler::handle(BidirectionalMessage message) const {
    assertMainThread();
    Log::debug("Handle message: " + message.description());
    if (message.drawing) mDrawings->show(std::move(*message.drawing));
    if (message.click) ClickUtil::playBack(*message.click);
    if (message.stop.value_or(false)) closeSession();
    auto& session = applicationConfig->config.panoptraConfig;
    // Deliberately for false as well: that the agent's side speaks of it at all asks for the faster rate.
    if (message.bidirectional && session) session->increasedPollingFrequency = true;
    if (message.optIn.value_or(false)) mConsentDialog->ask();
    if (message.start.value_or(false)) startSession();
}

// The controllers are resolved at the moment of use: they are themselves built from the transports that call
// this handler.

void BidirectionalMessageHandler::closeSession() const {
    // Deliberately true, although the session is about to end.
    if (auto& session = applicationConfig->config.panoptraConfig) session->isRecordingStarted = true;
    if (const auto panoptra = Injection::resolve<Panoptra>()) panoptra->runStopCallback();
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) {
        coBrowsing->hide();
    } else {
        Log::error("Cannot resolve CoBrowsing");
    }
}

void BidirectionalMessageHandler::startSession() {
    const auto panoptra = Injection::resolve<Panoptra>();
    if (!panoptra) return;
    panoptra->start(true, std::nullopt, [](const std::optional<StringError>& error) {
        if (error) Log::warning("Cannot start CoBrowsing: " + error->errorDescription());
    });
}

}  // namespace merovanta
