#include "ConsoleApi.h"

#include <nlohmann/json.hpp>

#include "JsonBody.h"

namespace merovanta::devservice {

using nlohmann::json;

namespace {
// Room for a drawing over a large screen.
constexpr std::size_t kMaxMessageBytes = 4U << 20U;
}  // namespace

void ConsoleApi::addRoutes(GuardedRoutes& routes) {
    routes.add("GET", "/console/*", [this](const Request& request) {
        return assets_.serve("console", request.wildcards.front(), request);
    });
    routes.add("GET", "/console/api/settings",
               [this](const Request&) { return Response::json(initReply_.settings()); });
    routes.add("PUT", "/console/api/settings",
               [this](const Request& request) { return changeSettings(request); });
    routes.add("GET", "/console/api/visitors",
               [this](const Request&) { return Response::json(visitors_.summaries(currentMoment())); });
    addFaultRoutes(routes);
    addVisitorRoutes(routes);
    addPresenceRoutes(routes);
    routes.addWebSocket("/console/ws", [this](Upgrade& upgrade) { return hub_.open(upgrade); });
}

void ConsoleApi::addFaultRoutes(GuardedRoutes& routes) {
    const std::string path = "/console/api/faults";
    routes.add("GET", path, [this](const Request&) { return Response::json(faults_.toJson()); });
    routes.add("PUT", path, [this](const Request& request) {
        const json changes = json::parse(request.body.begin(), request.body.end(), nullptr, false);
        if (const auto problem = faults_.apply(changes)) return Response::error(400, *problem);
        return Response::json(faults_.toJson());
    });
    routes.add("DELETE", path, [this](const Request&) {
        faults_.clear();
        return Response::json(faults_.toJson());
    });
}

void ConsoleApi::addVisitorRoutes(GuardedRoutes& routes) {
    const auto addForVisitor = [&](const char* method, const std::string& path, auto handler,
                                   std::size_t bodyLimit = Router::kDefaultBodyLimit) {
        const auto forVisitor = [this, handler](const Request& request) {
            Visitor* visitor = visitors_.find(request.wildcards.front());
            return visitor == nullptr ? Response::error(404, "no such visitor") : handler(*visitor, request);
        };
        routes.add(method, "/console/api/visitors/*" + path, forVisitor, bodyLimit);
    };
    addForVisitor("GET", "", [](Visitor& visitor, const Request&) {
        return Response::json(visitor.summary(currentMoment()));
    });
    addForVisitor("GET", "/timeline", [](Visitor& visitor, const Request&) {
        return Response::json(visitor.timeline().entriesAfter(0));
    });
    addForVisitor("GET", "/frame.jpg", [](Visitor& visitor, const Request&) {
        if (!visitor.lastFrame()) return Response::error(404, "no picture yet");
        return Response{
            200, "image/jpeg", visitor.lastFrame()->jpeg, {{"Cross-Origin-Resource-Policy", "same-origin"}}};
    });
    const auto message = [this](Visitor& visitor, const Request& request) {
        return queueMessage(visitor, request);
    };
    addForVisitor("POST", "/messages", message, kMaxMessageBytes);
    addForVisitor("POST", "/frames",
                  [this](Visitor& visitor, const Request& request) { return sendFrame(visitor, request); });
}

void ConsoleApi::addPresenceRoutes(GuardedRoutes& routes) {
    const std::string path = "/console/api/present";
    routes.add("GET", path, [this](const Request&) { return Response::json(presences_.toJson()); });
    routes.add("POST", path + "/*/invitation", [this](const Request& request) {
        Presence* presence = presences_.find(request.wildcards.front());
        if (presence == nullptr) return Response::error(404, "the visitor has left");
        if (!presence->listens) return Response::error(409, "the visitor's app takes no invitations");
        presences_.invite(*presence, agents_.identityOf(request), currentMoment());
        return Response::json({{"queued", true}}, 202);
    });
}

Response ConsoleApi::changeSettings(const Request& request) {
    const json changes = json::parse(request.body.begin(), request.body.end(), nullptr, false);
    if (const auto problem = initReply_.apply(changes)) return Response::error(400, *problem);
    hub_.settingsChanged();
    return Response::json(initReply_.settings());
}

Response ConsoleApi::queueMessage(Visitor& visitor, const Request& request) {
    const json message = parseObject(request.body);
    if (message.is_discarded())
        return Response::error(400, "the body is no JSON object, or nested too deeply");
    if (visitor.state() != Visitor::State::Live) return Response::error(409, "the visitor is not streaming");
    const AgentIdentity agent = agents_.identityOf(request);
    if (!agent.id.empty() && !controls_.claim(visitor.number(), agent.id, currentMoment())) {
        const auto* holder = agents_.find(controls_.holder(visitor.number()));
        return Response::error(
            423, (holder == nullptr ? "another agent" : holder->name) + " acts for this visitor");
    }
    const bool noted = request.target.value("again") != "true";
    const auto number = visitor.queueAgentMessage(message, agent, currentMoment(), noted);
    if (!number) return Response::error(429, "too many messages are waiting for this visitor");
    if (const auto socket = sockets_.find(visitor)) socket->sendNext();
    return Response::json({{"queued", true}, {"number", *number}}, 202);
}

Response ConsoleApi::sendFrame(const Visitor& visitor, const Request& request) {
    auto frame = SocketFrame::parse(json::parse(request.body.begin(), request.body.end(), nullptr, false));
    if (const auto* problem = std::get_if<std::string>(&frame)) return Response::error(400, *problem);
    const auto socket = sockets_.find(visitor);
    if (!socket) return Response::error(409, "the visitor has no WebSocket open");
    if (!socket->send(std::get<SocketFrame>(std::move(frame)))) {
        return Response::error(429, "too many frames are waiting for this visitor");
    }
    return Response::json({{"queued", true}}, 202);
}

}  // namespace merovanta::devservice
