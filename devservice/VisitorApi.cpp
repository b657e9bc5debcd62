#include "VisitorApi.h"

#include <nlohmann/json.hpp>

#include "EventDecoder.h"
#include "InterfaceTexts.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr std::size_t kMaxEventBytes = 8U << 20U;

// Discarded when the body is no JSON object.
json parseObject(std::string_view body) {
    json value = json::parse(body.begin(), body.end(), nullptr, false);
    return value.is_object() ? value : json(json::value_t::discarded);
}

std::string text(const json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::string activityText(const std::string& type) {
    if (type == "cs") return "Co-browsing started";
    if (type == "ce") return "Co-browsing stopped";
    if (type == "ca") return "Co-browsing accepted";
    if (type == "cd") return "Co-browsing declined";
    return "Activity \"" + type + "\"";
}

void checkSessionHeader(Visitor& visitor, const Request& request, const std::string& sessionId, Moment now) {
    if (request.session == sessionId) return;
    visitor.warn("Header X-QD-SSID is \"" + boundedText(request.session, 64) + "\", not the session id", now);
}

}  // namespace

void VisitorApi::addRoutes(Router& router) {
    const auto to = [this](Response (VisitorApi::*member)(const Request&)) {
        return [this, member](const Request& request) { return (this->*member)(request); };
    };
    router.add("POST", "/api/in/im/c", to(&VisitorApi::initialise));
    router.add("GET", "/api/ix/m", to(&VisitorApi::openStream));
    router.add("POST", "/api/ix/m", to(&VisitorApi::receiveEvents), kMaxEventBytes);
    router.add("DELETE", "/api/ix/m", to(&VisitorApi::closeStream));
    router.add("POST", "/api/in/io/l", to(&VisitorApi::logActivity));
    router.add("GET", "/api/in/i18n", [](const Request& request) {
        return Response::json(interfaceTexts(request.target.value("lang")));
    });
    router.add("GET", "/api/ic/h", [](const Request&) { return Response::json(json::object()); });
}

Response VisitorApi::initialise(const Request& request) {
    const json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    const Moment now = currentMoment();
    const InitRecord record = InitRecord::parse(body);
    Visitor& visitor = visitors_.obtain(record.tenantId, record.sessionId, now);
    visitor.initialised(record, now);
    checkSessionHeader(visitor, request, record.sessionId, now);
    recorder_.record(visitor, "init", request.body, now);
    return Response::json(initReply_.body(request.remoteAddress));
}

Visitor* VisitorApi::streamVisitor(const Request& request, Moment now) {
    const std::string sessionId = request.target.value("sId");
    if (sessionId.empty()) return nullptr;
    Visitor& visitor = visitors_.obtain(request.target.value("tId"), sessionId, now);
    visitor.identify(request.target.value("vId"), request.target.value("id"));
    checkSessionHeader(visitor, request, sessionId, now);
    return &visitor;
}

Response VisitorApi::openStream(const Request& request) {
    const Moment now = currentMoment();
    Visitor* visitor = streamVisitor(request, now);
    if (visitor == nullptr) return Response::error(400, "the query names no session (sId)");
    visitor->connected(request.target.value("url"), now);
    recorder_.record(*visitor, "connect", request.rawTarget, now);
    return Response::json(json::array());
}

Response VisitorApi::receiveEvents(const Request& request) {
    const Moment now = currentMoment();
    const auto events = decodeEvents(request.body);
    if (!events) {
        Visitor* known = visitors_.find(request.target.value("tId"), request.target.value("sId"));
        if (known != nullptr) known->warn("A request body was no list of events and was refused", now);
        return Response::error(400, "the body is no list of events");
    }
    Visitor* visitor = streamVisitor(request, now);
    if (visitor == nullptr) return Response::error(400, "the query names no session (sId)");
    recorder_.record(*visitor, *events, now);
    visitor->received(*events, request.body.size(), now);
    const json messages = visitor->takeAgentMessages();
    // Each element of the reply is a string that holds a JSON array of its own.
    return Response::json(messages.empty() ? json::array() : json::array({toText(messages)}));
}

Response VisitorApi::closeStream(const Request& request) {
    const Moment now = currentMoment();
    Visitor* visitor = streamVisitor(request, now);
    if (visitor == nullptr) return Response::error(400, "the query names no session (sId)");
    visitor->ended(now);
    recorder_.record(*visitor, "end", request.rawTarget, now);
    return Response::json(json::object());
}

Response VisitorApi::logActivity(const Request& request) {
    const json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    const auto meta = body.find("m");
    const json none = json::object();
    const json& ids = meta != body.end() && meta->is_object() ? *meta : none;
    const Moment now = currentMoment();
    if (Visitor* visitor = visitors_.find(text(ids, "tId"), text(ids, "sId"))) {
        visitor->activity(activityText(text(body, "t")), now);
        recorder_.record(*visitor, "activity", request.body, now);
    }
    return Response::json(none);
}

}  // namespace merovanta::devservice
