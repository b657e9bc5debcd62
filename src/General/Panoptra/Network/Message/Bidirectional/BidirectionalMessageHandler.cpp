#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"

#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/Util/ClickUtil.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr std::size_t maximumWaiting = 1000;

}  // namespace

BidirectionalMessageHandler::BidirectionalMessageHandler(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                                                         std::shared_ptr<UIStrings> strings)
    : applicationConfig(wrapper),
      mConsentDialog(std::make_shared<ConsentDialog>(std::move(wrapper), std::move(strings))) {}

void BidirectionalMessageHandler::handle(std::vector<BidirectionalMessage> messages) {
    assertMainThread();
    for (auto& message : messages) {
        if (mWaiting.size() == maximumWaiting) {
            Log::warning("Too many messages");
            break;
        }
        mWaiting.push_back(std::move(message));
    }
    if (!mNextTurn) handleNext();
}

void BidirectionalMessageHandler::discardWaiting() {
    assertMainThread();
    mWaiting.clear();
    mNextTurn.reset();
}

void BidirectionalMessageHandler::handleNext() {
    const auto self = shared_from_this();
    mNextTurn.reset();
    if (mWaiting.empty()) return;
    BidirectionalMessage message = std::move(mWaiting.front());
    mWaiting.pop_front();
    if (!mWaiting.empty())
        mNextTurn = platform::current().timers().schedule(seconds(0), false, [this] { handleNext(); });
    handle(std::move(message));
}

void BidirectionalMessageHandler::handle(BidirectionalMessage message) const {
    Log::debug("Handle message: " + message.description());
    if (message.drawing) mDrawings->show(std::move(*message.drawing));
    if (message.click) ClickUtil::playBack(*message.click);
    if (message.stop.value_or(false)) closeSession();
    auto& session = applicationConfig->config.panoptraConfig;
    // Deliberately for false as well: that the agent's side speaks of it at all asks for the faster rate.
    if (message.bidirectional && session) session->increasedPollingFrequency = true;
    const bool isStart = message.start.value_or(false);
    // What is left of an agent's wishes after a stop asks for nothing.
    const bool isQuestion = message.optIn.value_or(false) && (isStart || ConsentDialog::isSharing());
    if (isQuestion) mConsentDialog->ask();
    if (!isStart) return;
    startSession();
    if (isQuestion) mConsentDialog->sessionStarted();
}

void BidirectionalMessageHandler::visitorStarts() {
    mConsentDialog->mayAskAgain();
}

void BidirectionalMessageHandler::sessionEnded() {
    mConsentDialog->sessionEnded();
}

// The controllers are resolved at the moment of use: they are themselves built from the transports that call
// this handler.

void BidirectionalMessageHandler::closeSession() const {
    // Deliberately true, although the session is about to end.
    if (auto& session = applicationConfig->config.panoptraConfig) session->isRecordingStarted = true;
    if (const auto panoptra = Injection::resolve<Panoptra>()) panoptra->runStopCallback();
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (coBrowsing) {
        coBrowsing->hide(SessionEnd::agent);
    } else {
        Log::error("Cannot resolve CoBrowsing");
    }
}

void BidirectionalMessageHandler::startSession() {
    const auto panoptra = Injection::resolve<Panoptra>();
    if (!panoptra) return;
    panoptra->start(true, std::nullopt, SessionStarter::forced, [](const std::optional<StringError>& error) {
        if (error) Log::warning("Cannot start CoBrowsing: " + error->errorDescription());
    });
}

}  // namespace merovanta
