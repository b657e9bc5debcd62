#include "ChatSockets.h"

#include <string>
#include <utility>

#include "ChatSocket.h"
#include "Upgrade.h"

namespace merovanta::devservice {

std::optional<Response> ChatSockets::open(Upgrade& upgrade) {
    const std::string tenantId = upgrade.request.target.value("tId");
    const std::string visitorId = upgrade.request.target.value("vId");
    if (tenantId.empty() || visitorId.empty())
        return Response::error(400, "the query names no tenant or no visitor");
    std::erase_if(sockets_, [](const auto& socket) { return socket.expired(); });
    if (sockets_.size() >= kMaxSockets) return Response::error(503, "too many chats are open");
    auto socket =
        std::make_shared<ChatSocket>(std::move(upgrade.stream), upgrade.slot, contacts_, tenantId, visitorId);
    sockets_.push_back(socket);
    socket->start(std::move(upgrade.handshake));
    return std::nullopt;
}

void ChatSockets::contactChanged(const Contact& contact) {
    for (const auto& weak : sockets_) {
        if (const auto socket = weak.lock()) socket->contactChanged(contact);
    }
}

}  // namespace merovanta::devservice
