#include "InMemory/WebSocketsInMemory.h"

#include <utility>

namespace merovanta::inmemory {

namespace {

class WebSocketInMemory : public WebSocket {
 public:
    explicit WebSocketInMemory(std::shared_ptr<WebSocketPeerInMemory> peer) : mPeer(std::move(peer)) {}
    ~WebSocketInMemory() override { mPeer->dropped(); }
    WebSocketInMemory(const WebSocketInMemory&) = delete;
    WebSocketInMemory& operator=(const WebSocketInMemory&) = delete;

    void connect() override { mPeer->connect(); }
    void write(std::string data) override { mPeer->receive(std::move(data)); }
    void disconnect(int closeCode) override { mPeer->disconnect(closeCode); }

 private:
    std::shared_ptr<WebSocketPeerInMemory> mPeer;
};

}  // namespace

std::unique_ptr<WebSocket> WebSocketsInMemory::create(HttpRequest request, WebSocket::Delegate delegate) {
    peers.push_back(std::make_shared<WebSocketPeerInMemory>(mTime, std::move(request), std::move(delegate)));
    return std::make_unique<WebSocketInMemory>(peers.back());
}

}  // namespace merovanta::inmemory
