#include "General/Panoptra/Network/Message/WebSocket/WebSocketMessageSender.h"

#include <utility>

#include "General/ConstantUtils.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr int normalClosure = 1000;
constexpr double secondsBetweenAttempts = 0.25;
constexpr int attemptsAtThatPace = 20;
constexpr double secondsBetweenLaterAttempts = 5.0;
// A connection that holds for so long ends a row of attempts.
constexpr std::chrono::seconds stable{5};
constexpr std::size_t longestDescription = 1000;
constexpr std::size_t maximumUnreadBytes = 2 * WebSocket::maximumMessageBytes;

/// A value that is too large to be read in a log is only measured: describing one that is nested deeply
/// would take as many stack frames.
std::string describe(const nlohmann::json& value, std::size_t textLength) {
    if (textLength > longestDescription) return "a value of " + std::to_string(textLength) + " bytes";
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

WebSocketMessageSender::WebSocketMessageSender(std::shared_ptr<ApplicationConfigWrapper> wrapper,
                                               std::shared_ptr<BidirectionalMessageParser> parser,
                                               std::shared_ptr<InitSender> init,
                                               std::shared_ptr<ViewMonitor> monitor,
                                               std::shared_ptr<HttpUtil> util,
                                               std::shared_ptr<MerovantaAPI> api)
    : MessageSender(std::move(init), std::move(api), wrapper),
      applicationConfig(std::move(wrapper)),
      bidirectionalMessageParser(std::move(parser)),
      viewMonitor(std::move(monitor)),
      httpUtil(std::move(util)) {}

std::string WebSocketMessageSender::endpointUrl(const std::string& pageUrl) const {
    const ApplicationConfig config = streamConfig();
    const VisitConfig visit = config.visitConfig.value_or(VisitConfig());
    const PanoptraConfig session = config.panoptraConfig.value_or(PanoptraConfig());
    const std::string sessionId = visit.sessionId.value_or("");
    // The service expects the session's id under two keys.
    return ConstantUtils::valueOrEmpty("WebSocketProtocol") + "://" + config.hostname.value_or("") +
           "/api/in/imws?tId=" + config.tenantId.value_or("") + "&sId=" + sessionId +
           "&vId=" + visit.visitorId.value_or("") + "&t=" + config.token.value_or("") +
           "&id=" + visit.visitId.value_or("") + "&shrId=" + session.shareId.value_or("") +
           "&vsId=" + sessionId + "&url=" + pageUrl + "&fsTy=" + session.storageType.value_or("");
}

void WebSocketMessageSender::connect(const std::string& pageUrl, std::function<void()> onSuccess,
                                     std::function<void()> onError) {
    assertMainThread();
    successCallback = std::move(onSuccess);
    errorCallback = std::move(onError);
    const std::string url = endpointUrl(pageUrl);
    if (!parseUrl(url)) {
        Log::warning("Cannot construct URL");
        return;
    }
    Log::debug("Connect to " + url);
    setDelivered(false);
    mIsOpen = false;
    mAttempts = 0;
    mPace.reset();
    const auto visit = streamConfig().visitConfig;
    auto next = platform::current().webSockets().create(
        httpUtil->buildRequest(url, {.sessionId = visit ? visit->sessionId : std::nullopt}), delegate());
    next->connect();
    socket = std::move(next);
}

WebSocket::Delegate WebSocketMessageSender::delegate() {
    // The socket is this object's own, and silent once destroyed.
    return {.didConnect = [this] { didConnect(); },
            .didDisconnect = [this](const std::optional<WebSocketError>& error) { didDisconnect(error); },
            .didReceiveText = [this](std::string text) { didReceiveText(std::move(text)); },
            .didReceiveData = [](const std::string&) { Log::error("Received unexpected binary data"); }};
}

void WebSocketMessageSender::send(ProtoMessage message, const Callback& callback) {
    assertMainThread();
    if (!socket) {
        callback(StringError("No socket found"));
        return;
    }
    if (!wasSuccessfulOnce) {
        callback(StringError("Sender is closed"));
        return;
    }
    ProtoMessageList list;
    *list.add_messages() = std::move(message);
    std::string frame;
    if (!list.SerializeToString(&frame)) {
        callback(StringError("Error while sending message: it cannot be serialised"));
        return;
    }
    socket->write(std::move(frame));
    callback(std::nullopt);
}

void WebSocketMessageSender::close() {
    MessageSender::close();
    wasSuccessfulOnce = false;
    mIsOpen = false;
    mPace.reset();
    bidirectionalMessageParser->discardWaiting();
    if (socket) socket->disconnect(normalClosure);
}

void WebSocketMessageSender::abandon() {
    assertMainThread();
    successCallback = nullptr;
    errorCallback = nullptr;
    mPace.reset();
    socket.reset();
}

void WebSocketMessageSender::didConnect() {
    assertMainThread();
    Log::debug("Connection opened");
    // Only now there is one for the service to close.
    if (!wasSuccessfulOnce) rememberStream();
    wasSuccessfulOnce = true;
    mIsOpen = true;
    mOpenedAt = platform::current().clock().sinceEpoch();
    setDelivered(true);
    sendWaiting();
    errorCallback = nullptr;
    const auto self = shared_from_this();
    if (const auto callback = std::exchange(successCallback, nullptr)) callback();
    notify(&StreamObserver::opened);
}

void WebSocketMessageSender::didDisconnect(const std::optional<WebSocketError>& error) {
    assertMainThread();
    if (error) {
        const auto code = error->code;
        if (!code) {
            Log::warning("Connection closed with unknown error");
        } else if (*code != normalClosure) {
            Log::warning("Connection closed: " + std::to_string(*code));
        } else {
            Log::debug("Connection closed");
        }
    }
    const auto self = shared_from_this();
    const bool wasOpen = std::exchange(mIsOpen, false);
    if (error && wasSuccessfulOnce) {
        if (wasOpen && platform::current().clock().sinceEpoch() - mOpenedAt >= stable) mAttempts = 0;
        connectAgain();
        if (wasOpen) notify(&StreamObserver::lost);
    }
    if (const auto callback = std::exchange(errorCallback, nullptr)) {
        successCallback = nullptr;
        callback();
    }
}

void WebSocketMessageSender::connectAgain() {
    if (mPace) {
        mMustConnect = true;
    } else {
        attempt();
    }
}

void WebSocketMessageSender::attempt() {
    mMustConnect = false;
    const double pause =
        ++mAttempts > attemptsAtThatPace ? secondsBetweenLaterAttempts : secondsBetweenAttempts;
    mPace = platform::current().timers().schedule(seconds(pause), false, [this] {
        mPace.reset();
        if (mMustConnect) attempt();
    });
    Log::debug("Connect again");
    socket->connect();
}

void WebSocketMessageSender::reconnect() {
    assertMainThread();
    if (wasSuccessfulOnce && !mIsOpen) attempt();
}

void WebSocketMessageSender::didReceiveText(std::string text) {
    if (text.size() > maximumUnreadBytes - mUnreadBytes) {
        Log::error("Cannot parse WebSocket response: too many messages at once");
        return;
    }
    mUnreadBytes += text.size();
    // Read on the work queue: a message may hold a large picture.
    platform::current().workQueue().async(
        [weak = weak_from_this(), parser = bidirectionalMessageParser, text = std::move(text)] {
            ViewUtils::runOnMainQueue([weak, incoming = read(text, *parser)]() mutable {
                const auto self = std::static_pointer_cast<WebSocketMessageSender>(weak.lock());
                if (self) self->handle(std::move(incoming));
            });
        });
}

WebSocketMessageSender::Incoming WebSocketMessageSender::read(const std::string& text,
                                                              const BidirectionalMessageParser& parser) {
    Incoming incoming{.size = text.size()};
    if (isNestedTooDeeply(text)) {
        incoming.error = "Cannot parse JSON of WebSocket response: too deep";
        return incoming;
    }
    try {
        const auto json = nlohmann::json::parse(text);
        if (json.is_object()) {
            incoming.message = parser.read(json);
        } else {
            incoming.error = "Cannot convert to dict: " + describe(json, text.size());
        }
    } catch (const nlohmann::json::exception& exception) {
        incoming.error = "Cannot parse JSON of WebSocket response: " +
                         std::string(exception.what()).substr(0, longestDescription);
    }
    return incoming;
}

void WebSocketMessageSender::handle(Incoming incoming) {
    assertMainThread();
    mUnreadBytes -= incoming.size;
    // Of a connection that has been closed, the agent has no more say.
    if (!wasSuccessfulOnce) return;
    if (!incoming.message) {
        Log::error(incoming.error);
        return;
    }
    std::vector<BidirectionalMessage> messages;
    messages.push_back(std::move(*incoming.message));
    bidirectionalMessageParser->handOver(std::move(messages));
}

}  // namespace merovanta
