#include "Qt/Foundation/WebSocketConnectionQt.h"

#include <QtNetwork/QSslSocket>
#include <chrono>
#include <utility>
#include <variant>

#include "Qt/Foundation/ProxyFactoryQt.h"
#include "Qt/Foundation/RequestQt.h"

namespace merovanta::qt {

namespace {

constexpr std::chrono::seconds closingTime{5};
/// A connection that nothing has come over for three of these is dead, though nobody may ever say so: the
/// device has changed its network, or a router has forgotten it.
constexpr std::chrono::seconds pulseInterval{4};
constexpr int mostUnanswered = 2;
/// What may wait, either to be handled here or to be taken by the other side.
constexpr std::size_t maximumWaitingBytes = 4 * WebSocket::maximumMessageBytes;
/// An empty message takes memory, too.
constexpr std::size_t messageOverhead = 256;

}  // namespace

WebSocketConnectionQt::WebSocketConnectionQt(QObject* parent, Events events)
    : QObject(parent), mEvents(std::move(events)) {
    mSocket.setMaxAllowedIncomingFrameSize(WebSocket::maximumMessageBytes);
    mSocket.setMaxAllowedIncomingMessageSize(WebSocket::maximumMessageBytes);
    // A frame is read when it is complete; the rest is for its header.
    mSocket.setReadBufferSize(static_cast<qint64>(WebSocket::maximumMessageBytes) + 1024);
    mTimer.setSingleShot(true);
    connect(&mTimer, &QTimer::timeout, this, [this] { end("The connection timed out"); });

    mPulse.setInterval(pulseInterval);
    connect(&mPulse, &QTimer::timeout, this, &WebSocketConnectionQt::pulse);
    connect(&mSocket, &QWebSocket::connected, this, &WebSocketConnectionQt::opened);
    connect(&mSocket, &QWebSocket::textMessageReceived, this,
            [this](const QString& text) { receive(text.toStdString(), mEvents.textReceived); });
    connect(&mSocket, &QWebSocket::binaryMessageReceived, this,
            [this](const QByteArray& data) { receive(data.toStdString(), mEvents.dataReceived); });
    connect(&mSocket, &QWebSocket::aboutToClose, this, &WebSocketConnectionQt::closing);
    const auto broken = [this] { end(mSocket.errorString().toStdString()); };
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(&mSocket, &QWebSocket::errorOccurred, this, broken);
#else
    connect(&mSocket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), this, broken);
#endif
    // Queued, since the error that tells why may come only after this.
    connect(&mSocket, &QWebSocket::disconnected, this, broken, Qt::QueuedConnection);
}

WebSocketConnectionQt::~WebSocketConnectionQt() {
    // The socket says goodbye if it is open, and would tell so.
    mSocket.disconnect(this);
}

void WebSocketConnectionQt::open(const HttpRequest& request) {
    auto checked = nativeRequest(request, {u"ws", u"wss"});
    if (auto* const refusal = std::get_if<StringError>(&checked)) return end(std::move(refusal->mMsg));
    const auto& native = std::get<QNetworkRequest>(checked);
    mSocket.setProxy(ProxyFactoryQt::tunnelTo(native.url()));
    mTimer.start(request.timeout);
    mSocket.open(native);
}

void WebSocketConnectionQt::write(const std::string& data) {
    if (mSocket.state() != QAbstractSocket::ConnectedState) return;
    if (unsent() > static_cast<qint64>(maximumWaitingBytes)) {
        return end("The other side takes no data");
    }
    mSocket.sendBinaryMessage(QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size())));
}

void WebSocketConnectionQt::close(int code) {
    if (mSocket.state() == QAbstractSocket::ConnectingState) return end("The connection was given up");
    mSocket.close(static_cast<QWebSocketProtocol::CloseCode>(code));
}

void WebSocketConnectionQt::acknowledge(std::size_t messageSize) {
    mUnacknowledged -= messageSize + messageOverhead;
}

void WebSocketConnectionQt::opened() {
    mTimer.stop();
    // Large messages take their time, in either direction.
    const auto* const stream = mSocket.findChild<QAbstractSocket*>();
    connect(stream, &QIODevice::readyRead, this, [this] { mUnanswered = 0; });
    connect(stream, &QIODevice::bytesWritten, this, [this] {
        if (mIsCongested) mUnanswered = 0;
    });
    mPulse.start();
    mEvents.opened();
}

void WebSocketConnectionQt::pulse() {
    if (mUnanswered == mostUnanswered) return end("The connection is dead");
    ++mUnanswered;
    mIsCongested = unsent() > 0;
    mSocket.ping();
}

void WebSocketConnectionQt::closing() {
    // Comes a second time when the close frame is on its way. A connection that broke tells an error before
    // this, if it tells this at all; closeCode() is no help, it begins as 1000.
    if (mCloseCode) return;
    // Converted at once: codes such as 4000 lie outside of what the enumeration may hold in memory.
    mCloseCode = static_cast<int>(mSocket.closeCode());
    mPulse.stop();
    mTimer.start(closingTime);
}

void WebSocketConnectionQt::receive(std::string message, const std::function<void(std::string)>& event) {
    if (mCloseCode) return;
    // The socket itself counts a text's characters, not its bytes.
    if (message.size() > WebSocket::maximumMessageBytes) {
        return mSocket.close(QWebSocketProtocol::CloseCodeTooMuchData);
    }
    mUnacknowledged += message.size() + messageOverhead;
    if (mUnacknowledged > maximumWaitingBytes) {
        return mSocket.close(QWebSocketProtocol::CloseCodePolicyViolated);
    }
    event(std::move(message));
}

qint64 WebSocketConnectionQt::unsent() const {
    // The socket forgets what it has encrypted, though that may wait as well.
    const auto* const tls = mSocket.findChild<QSslSocket*>();
    return mSocket.bytesToWrite() + (tls == nullptr ? 0 : tls->encryptedBytesToWrite());
}

void WebSocketConnectionQt::end(std::string description) {
    const auto ended = std::exchange(mEvents.ended, nullptr);
    if (!ended) return;
    mSocket.disconnect(this);
    mTimer.stop();
    mPulse.stop();
    if (mCloseCode) description = mSocket.closeReason().toStdString();
    ended({.code = mCloseCode, .description = std::move(description)});
    deleteLater();
}

}  // namespace merovanta::qt
