#pragma once

#include "ContactRegistry.h"
#include "DocumentStore.h"
#include "GuardedRoutes.h"

namespace merovanta::devservice {

/// The part of the control API that is about people: who they are, and the agent's side of their chats.
class ContactApi {
 public:
    ContactApi(ContactRegistry& contacts, DocumentStore& documents)
        : contacts_(contacts), documents_(documents) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    Response say(Contact& contact, const Request& request);
    Response share(Contact& contact, const Request& request);
    Response markRead(Contact& contact, const Request& request);
    Response add(Contact& contact, ChatMessage message);

    ContactRegistry& contacts_;
    DocumentStore& documents_;
};

}  // namespace merovanta::devservice
