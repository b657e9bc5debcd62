#include "InMemory/WebSocketPeerInMemory.h"

#include <utility>

namespace merovanta::inmemory {

WebSocketPeerInMemory::WebSocketPeerInMemory(std::shared_ptr<VirtualTime> time, HttpRequest from,
                                             WebSocket::Delegate delegate)
    : request(std::move(from)),
      mTime(std::move(time)),
      mDelegate(std::make_shared<WebSocket::Delegate>(std::move(delegate))) {}

void WebSocketPeerInMemory::accept() {
    if (state != State::connecting) return;
    state = State::open;
    post([this](const WebSocket::Delegate& delegate) {
        if (state == State::open) delegate.didConnect();
    });
}

void WebSocketPeerInMemory::fail(WebSocketError error) {
    if (state == State::idle) return;
    state = State::idle;
    post([error = std::move(error)](const WebSocket::Delegate& delegate) { delegate.didDisconnect(error); });
}

void WebSocketPeerInMemory::sendText(std::string text) {
    if (!isBounded(text)) return;
    post([this, text = std::move(text)](const WebSocket::Delegate& delegate) {
        if (state == State::open) delegate.didReceiveText(text);
    });
}

void WebSocketPeerInMemory::sendData(std::string data) {
    if (!isBounded(data)) return;
    post([this, data = std::move(data)](const WebSocket::Delegate& delegate) {
        if (state == State::open) delegate.didReceiveData(data);
    });
}

void WebSocketPeerInMemory::connect() {
    if (state != State::idle) return;
    state = State::connecting;
    ++attempts;
}

void WebSocketPeerInMemory::receive(std::string data) {
    if (state == State::open) received.push_back(std::move(data));
}

void WebSocketPeerInMemory::disconnect(int code) {
    if (state == State::idle) return;
    state = State::idle;
    closeCode = code;
    post([](const WebSocket::Delegate& delegate) { delegate.didDisconnect(std::nullopt); });
}

void WebSocketPeerInMemory::dropped() {
    state = State::idle;
    mDelegate.reset();
}

void WebSocketPeerInMemory::post(std::function<void(const WebSocket::Delegate&)> event) {
    mTime->post([weak = std::weak_ptr(mDelegate), event = std::move(event)] {
        if (const auto delegate = weak.lock()) event(*delegate);
    });
}

bool WebSocketPeerInMemory::isBounded(const std::string& message) {
    if (state != State::open) return false;
    if (message.size() <= WebSocket::maximumMessageBytes) return true;
    fail({.code = 1009, .description = "The message is too large"});
    return false;
}

}  // namespace merovanta::inmemory
