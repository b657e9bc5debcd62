#pragma once

#include "ChatSockets.h"
#include "ContactRegistry.h"
#include "DocumentStore.h"
#include "GuardedRoutes.h"
#include "PageAssets.h"
#include "Tenants.h"

namespace merovanta::devservice {

/// What the visitor's chat page asks for: its own files, the chat itself and the documents in it.
class ChatApi {
 public:
    ChatApi(ChatSockets& sockets, ContactRegistry& contacts, DocumentStore& documents,
            const PageAssets& assets, const Tenants& tenants)
        : sockets_(sockets), contacts_(contacts), documents_(documents), assets_(assets), tenants_(tenants) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    Response document(const std::string& id) const;
    /// A file that the visitor attaches.
    Response attach(const Request& request);

    ChatSockets& sockets_;
    ContactRegistry& contacts_;
    DocumentStore& documents_;
    const PageAssets& assets_;
    const Tenants& tenants_;
};

}  // namespace merovanta::devservice
