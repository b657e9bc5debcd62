#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"

#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"

namespace merovanta {

BidirectionalMessageHandler::BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                                                         std::shared_ptr<UIStrings> strings)
    : applicationConfig(std::move(wrapper)), uiStrings(std::move(strings)) {}

void BidirectionalMessageHandler::handle(const BidirectionalMessage& message) const {
    Log::debug("Handle message: " + message.description());
    auto& session = applicationConfig->config.panoptraConfig;
    // Deliberately for false as well: that the agent's side speaks of it at all asks for the faster rate.
    if (message.bidirectional && session) session->increasedPollingFrequency = true;
    if (message.start.value_or(false)) startSession();
}

void BidirectionalMessageHandler::startSession() {
    // Resolved at the moment of use: the controller itself is built from the transports that call this
    // handler.
    const auto panoptra = Injection::resolve<Panoptra>();
    if (!panoptra) return;
    panoptra->start(true, std::nullopt, [](const std::optional<StringError>& error) {
        if (error) Log::warning("Cannot start CoBrowsing: " + error->errorDescription());
    });
}

}  // namespace merovanta
