#include "ContactApi.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "JsonBody.h"
#include "Text.h"

namespace merovanta::devservice {

using nlohmann::json;

void ContactApi::addRoutes(GuardedRoutes& routes) {
    const std::string path = "/console/api/contacts";
    const auto addForContact = [&](const char* method, const std::string& rest, auto handler,
                                   std::size_t bodyLimit = Router::kDefaultBodyLimit) {
        const auto forContact = [this, handler](const Request& request) {
            Contact* contact = contacts_.find(request.wildcards.front());
            return contact == nullptr ? Response::error(404, "no such contact") : handler(*contact, request);
        };
        routes.add(method, path + "/*" + rest, forContact, bodyLimit);
    };
    const auto to = [this](Response (ContactApi::*member)(Contact&, const Request&)) {
        return [this, member](Contact& contact, const Request& request) {
            return (this->*member)(contact, request);
        };
    };
    routes.add("GET", path, [this](const Request&) { return Response::json(contacts_.toJson()); });
    addForContact("GET", "/messages", [](Contact& contact, const Request&) {
        return Response::json(contact.chat.messagesAfter(0));
    });
    addForContact("POST", "/messages", to(&ContactApi::say));
    addForContact("POST", "/documents", to(&ContactApi::share), SharedDocument::kMaxBytes);
    addForContact("POST", "/typing", to(&ContactApi::types));
    addForContact("POST", "/read", to(&ContactApi::markRead));
}

Response ContactApi::say(Contact& contact, const Request& request) {
    const json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    std::string text = textMember(body, "text");
    if (const auto problem = ChatHistory::problemOf(text)) return Response::error(400, *problem);
    return add(contact, request, {.agent = {}, .text = std::move(text), .key = {}, .document = {}});
}

Response ContactApi::share(Contact& contact, const Request& request) {
    auto made = SharedDocument::make(request.target.value("name"), request.contentType,
                                     request.target.value("as"), request.body);
    if (const auto* problem = std::get_if<std::string>(&made)) return Response::error(400, *problem);
    auto& document = std::get<SharedDocument>(made);
    ChatMessage::Document shown{
        {}, boundedText(document.name, 512), document.contentType, document.content.size()};
    shown.url = "/api/in/wc/d/" + documents_.add(std::move(document));
    return add(contact, request, {.agent = {}, .text = {}, .key = {}, .document = std::move(shown)});
}

Response ContactApi::types(Contact& contact, const Request& request) {
    contacts_.agentTypes(contact, agents_.identityOf(request).name, currentMoment());
    return {204, {}, {}, {}};
}

Response ContactApi::add(Contact& contact, const Request& request, ChatMessage message) {
    message.at = currentMoment();
    message.author = ChatMessage::Author::Agent;
    message.agent = agents_.identityOf(request);
    contacts_.addMessage(contact, std::move(message));
    return Response::json(contact.chat.last()->toJson(), 201);
}

Response ContactApi::markRead(Contact& contact, const Request& request) {
    const json body = parseObject(request.body);
    const auto upTo = body.is_discarded() ? json() : body.value("upTo", json());
    if (!upTo.is_number_unsigned()) return Response::error(400, "\"upTo\" must be a message's number");
    contacts_.readUpTo(contact, upTo.get<std::uint64_t>());
    return Response::json(contact.toJson());
}

}  // namespace merovanta::devservice
