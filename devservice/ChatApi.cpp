#include "ChatApi.h"

namespace merovanta::devservice {

void ChatApi::addRoutes(GuardedRoutes& routes) {
    for (const char* folder : {"chat/", "shared/"}) {
        for (const std::string_view name : PageAssets::names(folder)) {
            const std::string path = "/cdn/chat/" + std::string(name.substr(name.find('/') + 1));
            routes.add("GET", path, [this, name](const Request&) { return assets_.serve(name); });
        }
    }
    routes.addWebSocket("/api/in/wc/ws", [this](Upgrade& upgrade) { return sockets_.open(upgrade); });
    routes.add("GET", "/api/in/wc/d/*",
               [this](const Request& request) { return document(request.wildcards.front()); });
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
