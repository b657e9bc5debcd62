#include "ChatApi.h"

#include <utility>
#include <variant>

#include "Text.h"
#include "Upgrade.h"

namespace merovanta::devservice {

void ChatApi::addRoutes(GuardedRoutes& routes) {
    routes.add("GET", "/cdn/chat/*", [this](const Request& request) {
        return assets_.serve("chat", request.wildcards.front(), request);
    });
    routes.addWebSocket("/api/in/wc/ws", [this](Upgrade& upgrade) -> std::optional<Response> {
        if (!tenants_.allows(upgrade.request.target.value("tId"))) return Tenants::refusal();
        return sockets_.open(upgrade);
    });
    routes.add("GET", "/api/in/wc/d/*",
               [this](const Request& request) { return document(request.wildcards.front()); });
    routes.add(
        "POST", "/api/in/wc/d", [this](const Request& request) { return attach(request); },
        SharedDocument::kMaxBytes);
}

Response ChatApi::attach(const Request& request) {
    const std::string tenantId = request.target.value("tId");
    const std::string visitorId = request.target.value("vId");
    std::string key = request.target.value("key");
    if (tenantId.empty() || visitorId.empty() || key.empty() || key.size() > ChatMessage::kMaxKeyBytes)
        return Response::error(400, "the query names no tenant, no visitor or no key");
    if (!tenants_.allows(tenantId)) return Tenants::refusal();
    auto made =
        SharedDocument::make(request.target.value("name"), request.contentType, "encoded", request.body);
    if (const auto* problem = std::get_if<std::string>(&made)) return Response::error(400, *problem);
    auto& document = std::get<SharedDocument>(made);
    ChatMessage::Document shown{
        {}, boundedText(document.name, 512), document.contentType, document.content.size()};
    const std::string url = shown.url = "/api/in/wc/d/" + documents_.add(std::move(document));
    Contact& contact = contacts_.obtain(tenantId, visitorId, currentMoment());
    contacts_.addMessage(contact, {.at = currentMoment(),
                                   .agent = {},
                                   .text = {},
                                   .key = std::move(key),
                                   .document = std::move(shown)});
    return Response::json({{"url", url}}, 201);
}

Response ChatApi::document(const std::string& id) const {
    const SharedDocument* found = documents_.find(id);
    if (found == nullptr) return Response::error(404, "no such document");
    // A document comes from the service's own origin, and one that is a page must not act as the console.
    Response response{200,
                      found->contentType,
                      found->content,
                      {{"Content-Security-Policy", "default-src 'none'; sandbox"},
                       {"Cross-Origin-Resource-Policy", "same-origin"}}};
    if (!found->contentDisposition.empty())
        response.headers.emplace_back("Content-Disposition", found->contentDisposition);
    return response;
}

}  // namespace merovanta::devservice
