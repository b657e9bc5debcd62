#pragma once

#include "ChatSockets.h"
#include "DocumentStore.h"
#include "GuardedRoutes.h"
#include "PageAssets.h"

namespace merovanta::devservice {

/// What the visitor's chat page asks for: its own files, the chat itself and the documents in it.
class ChatApi {
 public:
    ChatApi(ChatSockets& sockets, const DocumentStore& documents, const PageAssets& assets)
        : sockets_(sockets), documents_(documents), assets_(assets) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    Response document(const std::string& id) const;

    ChatSockets& sockets_;
    const DocumentStore& documents_;
    const PageAssets& assets_;
};

}  // namespace merovanta::devservice
