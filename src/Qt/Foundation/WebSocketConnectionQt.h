#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtWebSockets/QWebSocket>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "Platform/WebSocket.h"

namespace merovanta::qt {

/// One connection from its attempt to its end, after which it deletes itself. Thread: the network's, for
/// calls and events.
class WebSocketConnectionQt final : public QObject {
    Q_OBJECT

 public:
    struct Events {
        std::function<void()> opened;
        /// Once, and the last; not when the connection is destroyed before its end.
        std::function<void(WebSocketError)> ended;
        std::function<void(std::string text)> textReceived;
        std::function<void(std::string data)> dataReceived;
    };

    WebSocketConnectionQt(QObject* parent, Events events);
    ~WebSocketConnectionQt() override;

    void open(const HttpRequest& request);
    void write(const std::string& data);
    void close(int code);
    /// A received message of this size is done with.
    void acknowledge(std::size_t messageSize);

 private:
    void closing();
    void opened();
    void pulse();
    void receive(std::string message, const std::function<void(std::string)>& event);
    /// Bytes that the network has not taken yet.
    [[nodiscard]] qint64 unsent() const;
    void end(std::string description);

    Events mEvents;
    QWebSocket mSocket;
    /// Limits first the time that connecting takes, then that of closing.
    QTimer mTimer;
    /// Asks the other side for a sign of life, as long as the connection is open.
    QTimer mPulse;
    /// Questions since the last sign.
    int mUnanswered = 0;
    /// The network had not taken everything when it was asked last.
    bool mIsCongested = false;
    /// The size of the messages received and not yet acknowledged.
    std::size_t mUnacknowledged = 0;
    /// The code of the close frame, if one was received or sent.
    std::optional<int> mCloseCode;
};

}  // namespace merovanta::qt
