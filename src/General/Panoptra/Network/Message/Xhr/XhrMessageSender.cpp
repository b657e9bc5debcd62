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
    httpUtil->get(*url, [weak = weak_from_this(), loop = mLoop](HttpReply reply) {
        ViewUtils::runOnMainQueue([weak, loop, reply = std::move(reply)] {
            const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
            if (self) self->connected(loop, reply);
        });
    });
}

void XhrMessageSender::connected(unsigned loop, const HttpReply& reply) {
    assertMainThread();
    if (loop != mLoop) return;
    if (reply.error) {
        Log::error("Request failed");
        return;
    }
    currentInterval = queueSendingInterval;
    sendRound();
}

void XhrMessageSender::close() {
    MessageSender::close();
    stopped = true;
}

void XhrMessageSender::discardQueue() {
    assertMainThread();
    queue.clear_messages();
}

void XhrMessageSender::send(ProtoMessage message, const Callback& callback) {
    assertMainThread();
    // Nothing will be sent any more after the last round; the application may stay in the background for
    // days.
    if (!stopped || mRoundTimer) *queue.add_messages() = std::move(message);
    callback(std::nullopt);
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
    httpUtil->post(*url, std::move(body), [weak = weak_from_this(), loop = mLoop](const HttpReply& reply) {
        // Parsed here, off the main thread: a reply may hold a large picture.
        auto agentReply =
            reply.error || !reply.data ? std::nullopt : std::optional(AgentReply::parse(*reply.data));
        ViewUtils::runOnMainQueue(
            [weak, loop, failed = reply.error.has_value(), agentReply = std::move(agentReply)] {
                const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
                if (self) self->roundFinished(loop, failed, agentReply);
            });
    });
}

void XhrMessageSender::roundFinished(unsigned loop, bool failed,
                                     const std::optional<AgentReply>& agentReply) {
    assertMainThread();
    if (failed) {
        // The loop ends here for good; recovery is for those who chose this transport.
        Log::error("Request failed");
        return;
    }
    if (loop == mLoop) {
        // Only now, after the answer: what was queued while the request was under way goes too.
        queue.clear_messages();
        scheduleNextRound();
    }
    if (agentReply) handOver(*agentReply);
}

void XhrMessageSender::scheduleNextRound() {
    const auto& session = applicationConfig->config.panoptraConfig;
    const bool isFast = session && session->increasedPollingFrequency.value_or(false);
    currentInterval = isFast ? increasedQueueSendingInterval : queueSendingInterval;
    if (stopped) return;
    mRoundTimer =
        platform::current().timers().schedule(seconds(currentInterval), false, [this] { sendRound(); });
}

void XhrMessageSender::handOver(const AgentReply& agentReply) {
    for (const auto& message : agentReply.messages)
        bidirectionalMessageParser->parse(message);
    if (agentReply.isMalformed) Log::warning("Cannot parse message");
}

}  // namespace merovanta
