#include "AgentApi.h"

#include <nlohmann/json.hpp>

#include "JsonBody.h"

namespace merovanta::devservice {

namespace {
Response noAgent() {
    return Response::error(409, "only a browser with the console's cookie is an agent");
}
}  // namespace

void AgentApi::addRoutes(GuardedRoutes& routes) {
    routes.add("GET", "/console/api/agents",
               [this](const Request&) { return Response::json(hub_.agents()); });
    routes.add("GET", "/console/api/agent", [this](const Request& request) {
        const auto* agent = agents_.of(request);
        return agent == nullptr ? noAgent() : Response::json(agent->toJson());
    });
    routes.add("PUT", "/console/api/agent", [this](const Request& request) { return rename(request); });
    routes.add("POST", "/console/api/visitors/*/control",
               [this](const Request& request) { return control(request); });
}

Response AgentApi::rename(const Request& request) {
    auto* agent = agents_.of(request);
    if (agent == nullptr) return noAgent();
    const nlohmann::json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    if (const auto problem = agents_.rename(*agent, textMember(body, "name")))
        return Response::error(400, *problem);
    return Response::json(agent->toJson());
}

Response AgentApi::control(const Request& request) {
    const auto* agent = agents_.of(request);
    if (agent == nullptr) return noAgent();
    const Visitor* visitor = visitors_.find(request.wildcards.front());
    if (visitor == nullptr) return Response::error(404, "no such visitor");
    const nlohmann::json body = parseObject(request.body);
    const std::string what = body.is_discarded() ? "" : textMember(body, "do");
    if (what == "ask") {
        controls_.ask(visitor->number(), agent->id, currentMoment());
    } else if (what == "give" || what == "keep") {
        controls_.answer(visitor->number(), agent->id, what == "give", currentMoment());
    } else {
        return Response::error(400, "\"do\" must be \"ask\", \"give\" or \"keep\"");
    }
    return Response::json(controls_.toJson());
}

}  // namespace merovanta::devservice
