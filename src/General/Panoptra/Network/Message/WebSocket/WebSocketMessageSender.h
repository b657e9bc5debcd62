#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "General/Panoptra/Network/Message/MessageSender.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "Platform/Timer.h"
#include "Platform/WebSocket.h"

namespace merovanta {

/// The WebSocket transport: sends each message as one binary frame at once; text frames bring the agent's
/// messages. Once it was open it reconnects by itself until it is closed: at once, but no more than four
/// times a second, and after twenty attempts in a row once in five seconds. Thread: main.
class WebSocketMessageSender : public MessageSender {
 public:
    WebSocketMessageSender(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
                           std::shared_ptr<BidirectionalMessageParser> bidirectionalMessageParser,
                           std::shared_ptr<InitSender> initSender, std::shared_ptr<ViewMonitor> viewMonitor,
                           std::shared_ptr<HttpUtil> httpUtil, std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// Calls the first callback once when the connection opens, or the second once when it ends before that;
    /// neither if the configuration makes no URL, or another connect() comes first.
    void connect(const std::string& url, std::function<void()> successCallback,
                 std::function<void()> errorCallback) override;

    /// At once, whatever the pace.
    void reconnect() override;
    [[nodiscard]] bool reconnectsByItself() const override { return true; }

    void close() override;

    /// Gives up a connection that has not opened: nothing is heard of it any more, and the service, which
    /// knows no stream of it, is not told.
    void abandon();

    /// Success means handed to the socket: while it reconnects, messages that are sent here are lost.
    void send(ProtoMessage message, const Callback& callback) override;

    [[nodiscard]] bool reportsConnection() const override { return true; }
    [[nodiscard]] const char* typeName() const override { return "WebSocketMessageSender"; }

 protected:
    /// While it reconnects, messages wait.
    [[nodiscard]] bool takesMessages() const override { return mIsOpen || !wasSuccessfulOnce; }

 private:
    /// One text, read: the agent's message, or what is wrong with it.
    struct Incoming {
        std::size_t size = 0;
        std::optional<BidirectionalMessage> message;
        std::string error;
    };

    [[nodiscard]] static Incoming read(const std::string& text, const BidirectionalMessageParser& parser);
    [[nodiscard]] std::string endpointUrl(const std::string& pageUrl) const;
    [[nodiscard]] WebSocket::Delegate delegate();
    void didConnect();
    void didDisconnect(const std::optional<WebSocketError>& error);
    void connectAgain();
    void attempt();
    void didReceiveText(std::string text);
    void handle(Incoming incoming);

    std::unique_ptr<WebSocket> socket;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<BidirectionalMessageParser> bidirectionalMessageParser;
    // Only held.
    std::shared_ptr<ViewMonitor> viewMonitor;
    std::shared_ptr<HttpUtil> httpUtil;
    std::function<void()> successCallback;
    std::function<void()> errorCallback;
    bool wasSuccessfulOnce = false;
    bool mIsOpen = false;
    std::chrono::milliseconds mOpenedAt{};
    // Attempts to connect again, since a connection last held.
    int mAttempts = 0;
    // Until it has run, the next attempt waits.
    std::unique_ptr<Timer> mPace;
    bool mMustConnect = false;
    // Bytes of the texts that wait to be read.
    std::size_t mUnreadBytes = 0;
};

}  // namespace merovanta
