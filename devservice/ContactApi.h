#pragma once

#include "AgentRegistry.h"
#include "ContactRegistry.h"
#include "DocumentStore.h"
#include "GuardedRoutes.h"

namespace merovanta::devservice {

/// The part of the control API that is about people: who they are, and the agent's side of their chats.
class ContactApi {
 public:
    ContactApi(ContactRegistry& contacts, DocumentStore& documents, AgentRegistry& agents)
        : contacts_(contacts), documents_(documents), agents_(agents) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    Response say(Contact& contact, const Request& request);
    Response share(Contact& contact, const Request& request);
    Response markRead(Contact& contact, const Request& request);
    Response types(Contact& contact, const Request& request);
    Response add(Contact& contact, const Request& request, ChatMessage message);

    ContactRegistry& contacts_;
    DocumentStore& documents_;
    AgentRegistry& agents_;
};

}  // namespace merovanta::devservice
