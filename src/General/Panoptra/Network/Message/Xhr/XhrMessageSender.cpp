#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"

#include <algorithm>
#include <utility>

#include "General/Fatal.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Network/Message/Xhr/XhrSender.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

// Seconds after which a request without an answer is worth a doubt.
constexpr double shortestPatience = 1.5;
constexpr double longestPatience = 60.0;
// A slow network is known again by its answers: more time than they take, for a while after the last slow
// one.
constexpr double patienceOverAnswer = 2.0;
constexpr double patienceKept = 0.9;

}  // namespace

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
    url = XhrSender::endpointUrl(pageUrl, streamConfig());
    rememberStream();
    stopped = false;
    mPatience = shortestPatience;
    open();
}

void XhrMessageSender::reconnect() {
    assertMainThread();
    if (stopped) return;
    if (isSilent()) mPatience = std::min(2 * mPatience, longestPatience);
    open();
}

void XhrMessageSender::open() {
    if (!url) fatalError("A stream that was never connected");
    mRoundTimer.reset();
    mIsOpen = false;
    setDelivered(false);
    beginRequest();
    httpUtil->get(
        *url,
        [weak = weak_from_this(), request = std::weak_ptr(mRequest)](const HttpReply& reply) {
            ViewUtils::runOnMainQueue([weak, request, failed = reply.error.has_value()] {
                const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
                if (self && !request.expired()) self->opened(failed);
            });
        },
        requestOptions());
}

void XhrMessageSender::opened(bool failed) {
    assertMainThread();
    if (failed) {
        requestFailed();
        return;
    }
    endRequest();
    mIsOpen = true;
    currentInterval = queueSendingInterval;
    sendWaiting();
    sendRound();
    notify(&StreamObserver::opened);
}

void XhrMessageSender::close() {
    MessageSender::close();
    stopped = true;
    mIsOpen = false;
    mRequest.reset();
    bidirectionalMessageParser->discardWaiting();
    if (!mRoundTimer) queue.clear_messages();
}

void XhrMessageSender::finishLastRound() {
    assertMainThread();
    if (stopped && mRoundTimer) sendRound();
    queue.clear_messages();
}

/// A stream that is closed and has run its last round takes no more messages: the application may stay in the
/// background for days.
void XhrMessageSender::send(ProtoMessage message, const Callback& callback) {
    assertMainThread();
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
    beginRequest();
    httpUtil->post(
        *url, std::move(body),
        [weak = weak_from_this(), request = std::weak_ptr(mRequest),
         parser = bidirectionalMessageParser](const HttpReply& reply) {
            // Read here, off the main thread: a reply may hold large pictures.
            auto agentReply =
                reply.error || !reply.data ? AgentReply() : AgentReply::parse(*reply.data, *parser);
            ViewUtils::runOnMainQueue([weak, request, failed = reply.error.has_value(),
                                       agentReply = std::move(agentReply)]() mutable {
                const auto self = std::static_pointer_cast<XhrMessageSender>(weak.lock());
                if (self && !request.expired()) self->roundFinished(failed, std::move(agentReply));
            });
        },
        requestOptions());
    // The last round: nobody waits for its answer.
    if (!stopped) return;
    mRequest.reset();
    queue.clear_messages();
}

void XhrMessageSender::roundFinished(bool failed, AgentReply agentReply) {
    assertMainThread();
    if (failed) {
        requestFailed();
        return;
    }
    const bool wasSilent = isSilent();
    endRequest();
    setDelivered(true);
    // Only now, after the answer: what was queued while the request was under way goes too.
    queue.clear_messages();
    sendWaiting();
    scheduleNextRound();
    if (agentReply.isMalformed) Log::warning("Cannot parse message");
    bidirectionalMessageParser->handOver(std::move(agentReply.messages));
    if (wasSilent) notify(&StreamObserver::opened);
}

/// The loop ends here for good; recovery is for those who chose this transport.
void XhrMessageSender::requestFailed() {
    mRequest.reset();
    mIsOpen = false;
    Log::error("Request failed");
    notify(&StreamObserver::lost);
}

void XhrMessageSender::beginRequest() {
    mRequest = std::make_shared<Request>();
    mRequest->begun = platform::current().clock().sinceEpoch();
    mRequest->patience = platform::current().timers().schedule(seconds(mPatience), true, [this] {
        mRequest->isOverdue = true;
        notify(&StreamObserver::silent);
    });
}

void XhrMessageSender::endRequest() {
    const std::chrono::duration<double> took = platform::current().clock().sinceEpoch() - mRequest->begun;
    mPatience = std::clamp(std::max(patienceOverAnswer * took.count(), patienceKept * mPatience),
                           shortestPatience, longestPatience);
    mRequest.reset();
}

HttpUtil::Options XhrMessageSender::requestOptions() const {
    return {.sessionId = streamSession()};
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
