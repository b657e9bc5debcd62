#include "VisitorStreams.h"

#include <string>

#include "EventDecoder.h"
#include "Text.h"

namespace merovanta::devservice {

void VisitorStreams::checkSessionHeader(Visitor& visitor, const Request& request,
                                        const std::string& sessionId, Moment now) {
    if (request.session == sessionId) return;
    visitor.warn("Header X-QD-SSID is \"" + boundedText(request.session, 64) + "\", not the session id", now);
}

Visitor* VisitorStreams::find(const Request& request) {
    return visitors_.find(request.target.value("tId"), request.target.value("sId"));
}

Visitor* VisitorStreams::obtain(const Request& request, Moment now) {
    const std::string sessionId = request.target.value("sId");
    if (sessionId.empty()) return nullptr;
    Visitor& visitor = visitors_.obtain(request.target.value("tId"), sessionId, now);
    visitor.identify(request.target.value("vId"), request.target.value("id"), request.target.value("shrId"));
    checkSessionHeader(visitor, request, sessionId, now);
    return &visitor;
}

bool VisitorStreams::open(const Request& request, Transport transport) {
    const Moment now = currentMoment();
    Visitor* visitor = obtain(request, now);
    if (visitor == nullptr) return false;
    visitor->connected(request.target.value("url"), transport, now);
    recorder_.record(*visitor, "connect", request.rawTarget, now);
    return true;
}

VisitorStreams::Receipt VisitorStreams::receive(const Request& request, std::string_view body,
                                                Transport transport) {
    const Moment now = currentMoment();
    const auto events = decodeEvents(body);
    if (!events) {
        Visitor* known = find(request);
        if (known != nullptr) known->warn("What arrived was no list of events and was refused", now);
        return Receipt::NoEvents;
    }
    Visitor* visitor = obtain(request, now);
    if (visitor == nullptr) return Receipt::NoSession;
    recorder_.record(*visitor, *events, now);
    visitor->received(*events, body.size(), transport, now);
    return Receipt::Taken;
}

bool VisitorStreams::close(const Request& request) {
    const Moment now = currentMoment();
    Visitor* visitor = obtain(request, now);
    if (visitor == nullptr) return false;
    visitor->ended(now);
    recorder_.record(*visitor, "end", request.rawTarget, now);
    return true;
}

void VisitorStreams::disconnected(const Request& request, const std::string& how) {
    const Moment now = currentMoment();
    Visitor* visitor = find(request);
    if (visitor == nullptr) return;
    visitor->disconnected(how, now);
    recorder_.record(*visitor, "disconnect", how, now);
}

}  // namespace merovanta::devservice
