#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"

#include <utility>

#include "General/Fatal.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Network/Message/Xhr/XhrSender.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

XhrMessageSender::XhrMessageSender(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                                   std::shared_ptr<BidirectionalMessageParser> parser,
                                   std::shared_ptr<InitSender> init, std::shared_ptr<HttpUtil> util,
                                   std::shared_ptr<MerovantaAPI> api)
    : MessageSender(std::move(init), std::move(api), wrapper),
      applicationConfig(std::move(wrapper)),
      bidirectionalMessageParser(std::move(parser)),
      httpUtil(std::move(util)) {}

void XhrMessageSender::connect(const std::string& pageUrl, std::function<void()> /*successCallback*/,
                               std::function<void()> /*errorCallback*/) {
    assertMainThread();
    url = XhrSender::endpointUrl(pageUrl, applicationConfig->config);
    stopped = false;
    mRoundTimer.reset();
    ++mLoop;
    mIsRequesting = true;
    httpUtil->get(*url, [weak = weak_from_this(), loop = mLoop](const HttpReply& reply) {
        ViewUtils::runOnMainQueue([weak, loop, failed = reply.error.has_value()] {
            const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
            if (self) self->connected(loop, failed);
        });
    });
}

void XhrMessageSender::connected(unsigned loop, bool failed) {
    assertMainThread();
    if (loop != mLoop) return;
    mIsRequesting = false;
    if (failed) {
        Log::error("Request failed");
        return;
    }
    currentInterval = queueSendingInterval;
    sendRound();
}

void XhrMessageSender::close() {
    MessageSender::close();
    stopped = true;
    bidirectionalMessageParser->discardWaiting();
    if (!mayStillSend()) queue.clear_messages();
}

void XhrMessageSender::finishLastRound() {
    assertMainThread();
    if (stopped && mRoundTimer) sendRound();
    queue.clear_messages();
}

void XhrMessageSender::send(ProtoMessage message, const Callback& callback) {
    assertMainThread();
    if (mayStillSend()) *queue.add_messages() = std::move(message);
    callback(std::nullopt);
}

/// A stream that is closed, has run its last round and waits for nothing takes no more messages: the
/// application may stay in the background for days.
bool XhrMessageSender::mayStillSend() const {
    return !stopped || mRoundTimer || mIsRequesting;
}

void XhrMessageSender::sendRound() {
    assertMainThread();
    mRoundTimer.reset();
    if (queue.messages().empty()) {
        scheduleNextRound();
        return;
    }
    std::string body;
    if (!queue.SerializeToString(&body)) {
        Log::warning("Cannot serialize data; Discard messages in queue");
        queue.clear_messages();
        scheduleNextRound();
        return;
    }
    postQueue(std::move(body));
}

void XhrMessageSender::postQueue(std::string body) {
    if (!url) fatalError("A round of a sender that was never connected");
    mIsRequesting = true;
    httpUtil->post(
        *url, std::move(body),
        [weak = weak_from_this(), loop = mLoop, parser = bidirectionalMessageParser](const HttpReply& reply) {
            // Read here, off the main thread: a reply may hold large pictures.
            auto agentReply =
                reply.error || !reply.data ? AgentReply() : AgentReply::parse(*reply.data, *parser);
            ViewUtils::runOnMainQueue(
                [weak, loop, failed = reply.error.has_value(), agentReply = std::move(agentReply)]() mutable {
                    const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
                    if (self) self->roundFinished(loop, failed, std::move(agentReply));
                });
        });
}

void XhrMessageSender::roundFinished(unsigned loop, bool failed, AgentReply agentReply) {
    assertMainThread();
    const bool isCurrent = loop == mLoop;
    if (isCurrent) mIsRequesting = false;
    if (failed) {
        // The loop ends here for good; recovery is for those who chose this transport.
        Log::error("Request failed");
        if (isCurrent && stopped) queue.clear_messages();
        return;
    }
    if (isCurrent) {
        // Only now, after the answer: what was queued while the request was under way goes too.
        queue.clear_messages();
        scheduleNextRound();
    }
    if (agentReply.isMalformed) Log::warning("Cannot parse message");
    // Of a stream that has been closed, the agent has no more say.
    if (isCurrent && !stopped) bidirectionalMessageParser->handOver(std::move(agentReply.messages));
}

void XhrMessageSender::scheduleNextRound() {
    const auto& session = applicationConfig->config.panoptraConfig;
    const bool isFast = session && session->increasedPollingFrequency.value_or(false);
    currentInterval = isFast ? increasedQueueSendingInterval : queueSendingInterval;
    if (stopped) return;
    mRoundTimer =
        platform::current().timers().schedule(seconds(currentInterval), false, [this] { sendRound(); });
}

}  // namespace merovanta
