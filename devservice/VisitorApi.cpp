#include "VisitorApi.h"

#include <nlohmann/json.hpp>

#include "ChannelPoll.h"
#include "ChatConfiguration.h"
#include "IdentityRecord.h"
#include "InterfaceTexts.h"
#include "JsonBody.h"
#include "Text.h"
#include "Upgrade.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxEventBytes = 8U << 20U;

std::string activityText(const json& record) {
    const std::string type = textMember(record, "t");
    if (type == "cs") return "Co-browsing started";
    if (type == "ce") return "Co-browsing stopped";
    if (type == "ca") return "Co-browsing accepted";
    if (type == "cd") return "Co-browsing declined";
    std::string result = "Other activity";
    for (const char* key : {"t", "cc", "v"}) {
        if (const std::string value = textMember(record, key); !value.empty()) result += ", " + value;
    }
    return result;
}

Response namesNoSession() {
    return Response::error(400, "the query names no session (sId)");
}

}  // namespace

void VisitorApi::addRoutes(Router& router) {
    const auto to = [this](Response (VisitorApi::*member)(const Request&)) {
        return [this, member](const Request& request) { return (this->*member)(request); };
    };
    // Where the query names the tenant.
    const auto ofTenant = [this](auto handler) {
        return [this, handler](const Request& request) {
            return tenants_.allows(request.target.value("tId")) ? handler(request) : Tenants::refusal();
        };
    };
    router.add("POST", "/api/in/im/c", to(&VisitorApi::initialise));
    router.add("GET", "/api/ix/m", ofTenant(to(&VisitorApi::openStream)));
    router.add("POST", "/api/ix/m", ofTenant(to(&VisitorApi::receiveEvents)), kMaxEventBytes);
    router.add("DELETE", "/api/ix/m", ofTenant(to(&VisitorApi::closeStream)));
    router.add("POST", "/api/in/io/l", to(&VisitorApi::logActivity));
    router.add("POST", "/api/in/co", ofTenant(to(&VisitorApi::pollChannels)));
    router.add("GET", "/api/in/i18n", [](const Request& request) {
        return Response::json(interfaceTexts(request.target.value("lang")));
    });
    router.add("POST", "/rest/v1/customerstatus/tag/byVisitor/**", ofTenant(to(&VisitorApi::identify)));
    router.add("GET", "/api/in/wc/c/**", [](const Request& request) {
        return Response::json(chatConfiguration(request.wildcards.front()));
    });
    router.addWebSocket("/api/in/imws", [this](Upgrade& upgrade) -> std::optional<Response> {
        const Target& target = upgrade.request.target;
        if (!tenants_.allows(target.value("tId"), target.value("t"))) return Tenants::refusal();
        return sockets_.open(upgrade);
    });
    router.add("GET", "/api/ic/h", [](const Request&) { return Response::json(json::object()); });
}

Response VisitorApi::initialise(const Request& request) {
    const json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    const Moment now = currentMoment();
    const InitRecord record = InitRecord::parse(body);
    if (!tenants_.allows(record.tenantId)) return Tenants::refusal();
    Visitor& visitor = visitors_.obtain(record.tenantId, record.sessionId, now);
    visitor.initialised(record, now);
    visitors_.hasBegun(visitor);
    if (!record.visitorId.empty()) contacts_.seen(record.tenantId, record.visitorId, record.sessionId, now);
    if (const auto agent = presences_.takeDelivered(record.tenantId, record.visitorId, now)) {
        visitor.agentActed("Invited to co-browse", *agent, now);
    }
    VisitorStreams::checkSessionHeader(visitor, request, record.sessionId, now);
    recorder_.record(visitor, "init", request.body, now);
    return Response::json(initReply_.body(request.remoteAddress));
}

Response VisitorApi::openStream(const Request& request) {
    if (!streams_.open(request, Transport::Polling)) return namesNoSession();
    return Response::json(json::array());
}

Response VisitorApi::receiveEvents(const Request& request) {
    switch (streams_.receive(request, request.body, Transport::Polling)) {
        case VisitorStreams::Receipt::NoEvents:
            return Response::error(400, "the body is no list of events");
        case VisitorStreams::Receipt::NoSession:
            return namesNoSession();
        case VisitorStreams::Receipt::Taken:
            break;
    }
    std::string messages;
    Visitor& visitor = *streams_.find(request);
    while (const auto message = visitor.takeAgentMessage())
        messages += (messages.empty() ? "[" : ",") + *message;
    // Each element of the reply is a string that holds a JSON array of its own.
    return Response::json(messages.empty() ? json::array() : json::array({messages + "]"}));
}

Response VisitorApi::closeStream(const Request& request) {
    return streams_.close(request) ? Response::json(json::object()) : namesNoSession();
}

Response VisitorApi::logActivity(const Request& request) {
    const json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    const auto meta = body.find("m");
    const json none = json::object();
    const json& ids = meta != body.end() && meta->is_object() ? *meta : none;
    const std::string sessionId = textMember(ids, "sId");
    if (!tenants_.allows(textMember(ids, "tId"))) return Tenants::refusal();
    if (sessionId.empty()) return Response::json(none);
    // The first report of a session may come before its initialisation.
    const Moment now = currentMoment();
    Visitor& visitor = visitors_.obtain(textMember(ids, "tId"), sessionId, now);
    visitor.identify(textMember(ids, "vId"), "", "");
    visitor.activity(textMember(body, "t"), activityText(body), now);
    recorder_.record(visitor, "activity", request.body, now);
    return Response::json(none);
}

Response VisitorApi::pollChannels(const Request& request) {
    const auto poll = ChannelPoll::parse(request.body);
    if (!poll) return Response::error(400, "the body is no poll of channels");
    const std::string visitorId = request.target.value("vId");
    // Nobody whom a message could be meant for.
    if (visitorId.empty()) return Response::json(json::array());
    const std::string tenantId = request.target.value("tId");
    const Moment now = currentMoment();
    contacts_.seen(tenantId, visitorId, request.target.value("sId"), now);
    return Response::json(presences_.poll(tenantId, visitorId, *poll, now));
}

Response VisitorApi::identify(const Request& request) {
    auto identity = parseIdentity(request.body);
    if (!identity) return Response::error(400, "the body does not say who the visitor is");
    const std::string& visitorId = request.wildcards.front();
    if (!visitorId.empty()) {
        const Moment now = currentMoment();
        Contact& contact = contacts_.seen(request.target.value("tId"), visitorId, request.session, now);
        contacts_.identify(contact, std::move(*identity), now);
    }
    return Response::json(json::object());
}

}  // namespace merovanta::devservice
