#include "VisitorSockets.h"

#include <string>
#include <utility>

#include "Upgrade.h"

namespace merovanta::devservice {
namespace {

// What is wrong with the handshake's query, if anything.
std::optional<std::string> problemOf(const Target& target) {
    for (const char* key : {"tId", "sId", "vId", "t", "id", "shrId", "vsId", "url", "fsTy"}) {
        if (!target.query.contains(key)) return "the query lacks the key " + std::string(key);
    }
    if (target.value("sId").empty()) return "the query names no session (sId)";
    if (target.value("vsId") != target.value("sId")) return "the query's sId and vsId differ";
    return std::nullopt;
}

}  // namespace

std::optional<Response> VisitorSockets::open(Upgrade& upgrade) {
    if (const auto problem = problemOf(upgrade.request.target)) return Response::error(400, *problem);
    auto socket =
        std::make_shared<VisitorSocket>(std::move(upgrade.stream), upgrade.slot, upgrade.request, streams_);
    socket->start(std::move(upgrade.handshake), [this, weak = std::weak_ptr(socket)] {
        if (const auto opened = weak.lock()) onOpen(opened);
    });
    return std::nullopt;
}

void VisitorSockets::onOpen(const std::shared_ptr<VisitorSocket>& socket) {
    streams_.open(socket->opening(), Transport::WebSocket);
    std::erase_if(sockets_, [](const auto& known) { return known.expired(); });
    if (const auto previous = find(*socket->visitor())) previous->replace();
    sockets_.push_back(socket);
}

std::shared_ptr<VisitorSocket> VisitorSockets::find(const Visitor& visitor) const {
    for (const auto& weak : sockets_) {
        auto socket = weak.lock();
        if (socket && socket->isCurrent() && socket->visitor() == &visitor) return socket;
    }
    return nullptr;
}

}  // namespace merovanta::devservice
