#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "General/Panoptra/Network/Message/MessageSender.h"
#include "General/Panoptra/Network/Message/Xhr/AgentReply.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "Platform/Timer.h"

namespace merovanta {

/// The polling transport: queues the messages and POSTs the whole queue after a short pause, again and again;
/// the replies bring the agent's messages. Thread: main.
class XhrMessageSender : public MessageSender {
 public:
    XhrMessageSender(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                     std::shared_ptr<BidirectionalMessageParser> bidirectionalMessageParser,
                     std::shared_ptr<InitSender> initSender, std::shared_ptr<HttpUtil> httpUtil,
                     std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// Announces the stream with a GET and, if that succeeds, starts the loop of rounds. Neither callback is
    /// used. A loop that ran before ends; a round that it had scheduled becomes part of the new one.
    void connect(const std::string& url, std::function<void()> successCallback,
                 std::function<void()> errorCallback) override;
    void reconnect() override;
    [[nodiscard]] bool reconnectsByItself() const override { return false; }
    [[nodiscard]] bool isSilent() const override { return mRequest && mRequest->isOverdue; }

    /// Ends what an earlier session has left behind, so that it cannot go out under another's name: runs its
    /// last round now if one is scheduled, and drops the rest. Call it before the session's ids change.
    void finishLastRound();

    /// A round that is scheduled already still runs, and is the last.
    void close() override;

    /// Only queues the message, and succeeds always. After the last round messages are dropped.
    void send(ProtoMessage message, const Callback& callback) override;

    [[nodiscard]] bool reportsConnection() const override { return false; }
    [[nodiscard]] const char* typeName() const override { return "XhrMessageSender"; }

 protected:
    /// A request under way empties the queue when it is answered: what is to go comes after it.
    [[nodiscard]] bool takesMessages() const override { return stopped || (mIsOpen && !mRequest); }

 private:
    /// The GET or the POST under way. The answer to one that was given up finds it gone.
    struct Request {
        std::unique_ptr<Timer> patience;
        std::chrono::milliseconds begun{};
        bool isOverdue = false;
    };

    void open();
    void opened(bool failed);
    void sendRound();
    void postQueue(std::string body);
    void roundFinished(bool failed, AgentReply agentReply);
    void scheduleNextRound();
    void beginRequest();
    /// It was answered.
    void endRequest();
    void requestFailed();
    [[nodiscard]] HttpUtil::Options requestOptions() const;

    const double queueSendingInterval = 0.1;
    const double increasedQueueSendingInterval = 0.03;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<BidirectionalMessageParser> bidirectionalMessageParser;
    std::shared_ptr<HttpUtil> httpUtil;
    std::optional<std::string> url;
    double currentInterval = 0;
    ProtoMessageList queue;
    bool stopped = true;

    // The loop runs.
    bool mIsOpen = false;
    std::unique_ptr<Timer> mRoundTimer;
    std::shared_ptr<Request> mRequest;
    // Seconds that a request may be without an answer before it is doubted: grows with those that are given
    // up.
    double mPatience = 0;
};

}  // namespace merovanta
