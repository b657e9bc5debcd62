#include "Qt/Foundation/WebSocketQt.h"

#include <utility>

#include "Qt/Foundation/NetworkThreadQt.h"

namespace merovanta::qt {

WebSocketQt::WebSocketQt(NetworkThreadQt& thread, MainQueue& mainQueue, HttpRequest request,
                         Delegate delegate)
    : mThread(thread),
      mMainQueue(mainQueue),
      mRequest(std::move(request)),
      mDelegate(std::make_shared<const Delegate>(std::move(delegate))) {}

WebSocketQt::~WebSocketQt() {
    mThread.post([connection = mConnection](QObject& /*owner*/) { delete connection->data(); });
}

void WebSocketQt::connect() {
    if (mState == State::closing) mConnectsAgain = true;
    if (mState != State::idle) return;
    mState = State::connecting;
    mThread.post([connection = mConnection, request = mRequest, events = events()](QObject& owner) {
        *connection = new WebSocketConnectionQt(&owner, events);
        (*connection)->open(request);
    });
}

void WebSocketQt::write(std::string data) {
    if (mState != State::open) return;
    onNetwork([data = std::move(data)](WebSocketConnectionQt& connection) { connection.write(data); });
}

void WebSocketQt::disconnect(int closeCode) {
    mConnectsAgain = false;
    if (mState != State::connecting && mState != State::open) return;
    mState = State::closing;
    onNetwork([closeCode](WebSocketConnectionQt& connection) { connection.close(closeCode); });
}

WebSocketConnectionQt::Events WebSocketQt::events() {
    const auto onMain = [queue = &mMainQueue, life = std::weak_ptr(mLife)](std::function<void()> event) {
        queue->async([life, event = std::move(event)] {
            if (!life.expired()) event();
        });
    };
    const auto receive = [this, onMain](Message message) {
        return [this, onMain, message](std::string content) {
            auto shared = std::make_shared<std::string>(std::move(content));
            onMain([this, message, shared = std::move(shared)] { received(message, std::move(*shared)); });
        };
    };
    return {
        .opened = [this, onMain] { onMain([this] { opened(); }); },
        .ended = [this, onMain](
                     WebSocketError error) { onMain([this, error = std::move(error)] { ended(error); }); },
        .textReceived = receive(&Delegate::didReceiveText),
        .dataReceived = receive(&Delegate::didReceiveData),
    };
}

void WebSocketQt::onNetwork(std::function<void(WebSocketConnectionQt&)> task) {
    mThread.post([connection = mConnection, task = std::move(task)](QObject& /*owner*/) {
        if (*connection) task(**connection);
    });
}

void WebSocketQt::opened() {
    if (mState != State::connecting) return;
    mState = State::open;
    const auto delegate = mDelegate;
    delegate->didConnect();
}

void WebSocketQt::ended(const WebSocketError& error) {
    const bool isAskedFor = std::exchange(mState, State::idle) == State::closing;
    if (std::exchange(mConnectsAgain, false)) connect();
    const auto delegate = mDelegate;
    delegate->didDisconnect(isAskedFor ? std::nullopt : std::optional(error));
}

void WebSocketQt::received(Message message, std::string content) {
    onNetwork([size = content.size()](WebSocketConnectionQt& connection) { connection.acknowledge(size); });
    if (mState != State::open) return;
    const auto delegate = mDelegate;
    ((*delegate).*message)(std::move(content));
}

}  // namespace merovanta::qt
