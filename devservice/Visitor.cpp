#include "Visitor.h"

#include <cmath>
#include <utility>

#include "Text.h"
#include "UserTagJson.h"

namespace merovanta::devservice {
namespace {

using com::merovanta::panoptra::ProtoClickEvent;
using com::merovanta::panoptra::ProtoMessage;
using com::merovanta::panoptra::ProtoMessageList;
using com::merovanta::panoptra::UserTag;
using nlohmann::json;

constexpr std::size_t kMaxPageBytes = 512;
constexpr std::size_t kMaxPictureBytes = 2U << 20U;
constexpr int kMaxLabels = 20;
constexpr std::chrono::seconds kWarningPause{10};
constexpr std::chrono::seconds kMostSilence{60};
constexpr std::chrono::minutes kLongestAway{30};

void take(std::string& target, const std::string& value) {
    if (!value.empty()) target = boundedText(value, kMaxIdentifierBytes);
}

json milliseconds(const std::optional<Moment>& moment) {
    return moment ? json(moment->time_since_epoch().count()) : json();
}

// A drawing as the timeline shows it: how large it is, in place of the picture itself.
json withoutPicture(json message) {
    const auto drawing = message.find("d");
    if (drawing == message.end() || !drawing->is_object()) return message;
    const auto picture = drawing->find("u");
    if (picture == drawing->end() || !picture->is_string()) return message;
    *picture = std::to_string(picture->get_ref<const std::string&>().size()) + " bytes";
    return message;
}

const char* name(Visitor::State state) {
    switch (state) {
        case Visitor::State::Waiting:
            return "waiting";
        case Visitor::State::Live:
            return "live";
        case Visitor::State::Ended:
            return "ended";
    }
    return "";
}

const char* name(Transport transport) {
    return transport == Transport::WebSocket ? "websocket" : "polling";
}

}  // namespace

Visitor::Visitor(std::uint32_t number, std::string tenantId, std::string sessionId, Moment now,
                 VisitorObserver& observer)
    : number_(number),
      tenantId_(std::move(tenantId)),
      sessionId_(std::move(sessionId)),
      firstSeen_(now),
      lastSeen_(now),
      observer_(observer) {}

void Visitor::initialised(const InitRecord& record, Moment now) {
    ++counters_.inits;
    lastSeen_ = now;
    state_ = State::Waiting;
    endedAt_.reset();
    endReason_.reset();
    saidItStops_ = false;
    identify(record.visitorId, record.visitId, record.shareId);
    page_ = boundedText(record.url, kMaxPageBytes);
    screenWidth_ = record.width;
    screenHeight_ = record.height;
    forced_ = record.initialize;
    add("init", page_, now, std::nullopt,
        {{"forced", forced_}, {"optIn", record.optIn}, {"start", record.start}});
    for (const std::string& key : record.problems) {
        warn("Initialisation record: key \"" + key + "\" is missing or has another type", now);
    }
    if (!record.redirectId.empty()) warn("Initialisation record: key \"qdu\" is not empty", now);
}

void Visitor::connected(const std::string& page, Transport transport, Moment now) {
    ++(transport == Transport::WebSocket ? counters_.sockets : counters_.gets);
    transport_ = transport;
    lastSeen_ = now;
    if (state_ != State::Live || transport == Transport::Polling) startedAt_ = now;
    state_ = State::Live;
    endedAt_.reset();
    endReason_.reset();
    connected_ = true;
    line_.restart();
    if (!page.empty()) page_ = boundedText(page, kMaxPageBytes);
    add("connect", page_, now, std::nullopt, {{"transport", name(transport)}});
}

void Visitor::disconnected(const std::string& how, Moment now) {
    ++counters_.disconnects;
    connected_ = false;
    add("disconnect", how, now);
}

void Visitor::received(const ProtoMessageList& events, std::size_t bodyBytes, Transport transport,
                       Moment now) {
    ++(transport == Transport::WebSocket ? counters_.socketFrames : counters_.posts);
    counters_.bytes += bodyBytes;
    byteRate_.add(now, bodyBytes);
    lastSeen_ = now;
    if (state_ == State::Waiting) {
        warn("Events arrived before the stream was opened", now);
        state_ = State::Live;
        startedAt_ = now;
    } else if (endReason_ == EndReason::Silent) {
        state_ = State::Live;
        endedAt_.reset();
        endReason_.reset();
        add("connect", page_, now, std::nullopt, {{"transport", name(transport)}});
    }
    for (const ProtoMessage& event : events.messages())
        receive(event, now);
}

void Visitor::ended(Moment now) {
    ++counters_.deletes;
    lastSeen_ = now;
    end(agentMessages_.askedToClose() ? EndReason::Agent
        : saidItStops_                ? EndReason::Visitor
                                      : EndReason::Background,
        now);
}

void Visitor::end(EndReason reason, Moment now) {
    state_ = State::Ended;
    endedAt_ = now;
    endReason_ = reason;
    connected_ = false;
    agentMessages_.clear();
    add("end", "", now, std::nullopt, {{"reason", name(reason)}});
}

void Visitor::activity(const std::string& type, const std::string& text, Moment now) {
    using Answer = AgentMessages::Answer;
    lastSeen_ = now;
    add("activity", text, now);
    if (type == "ca" && agentMessages_.answered(Answer::Accepted, now)) add("consent", "accepted", now);
    if (type == "cd" && agentMessages_.answered(Answer::Declined, now)) add("consent", "declined", now);
    if (type != "ce") return;
    // It comes before the stream is closed or after.
    saidItStops_ = true;
    if (endReason_ == EndReason::Background) endReason_ = EndReason::Visitor;
    observer_.visitorChanged(*this);
}

void Visitor::expire(Moment now) {
    if (state_ != State::Ended && now - lastSeen_ > kMostSilence)
        end(state_ == State::Live ? EndReason::Silent : EndReason::Unopened, now);
    if (endReason_ == EndReason::Background && now - *endedAt_ > kLongestAway) {
        endReason_ = EndReason::Away;
        observer_.visitorChanged(*this);
    }
}

void Visitor::continued() {
    if (endReason_ != EndReason::Background && endReason_ != EndReason::Away) return;
    endReason_ = EndReason::Continued;
    observer_.visitorChanged(*this);
}

void Visitor::warn(const std::string& text, Moment now) {
    ++counters_.warnings;
    if (text == lastWarning_ && now - lastWarningAt_ < kWarningPause) return;
    lastWarning_ = boundedText(text, kMaxPageBytes);
    lastWarningAt_ = now;
    add("warning", text, now);
}

void Visitor::identify(const std::string& visitorId, const std::string& visitId, const std::string& shareId) {
    take(visitorId_, visitorId);
    take(visitId_, visitId);
    take(shareId_, shareId);
}

void Visitor::agentActed(const std::string& text, const AgentIdentity& agent, Moment now) {
    add("agent", text, now, std::nullopt, {{"agent", agent.toJson()}});
}

std::optional<std::uint64_t> Visitor::queueAgentMessage(const json& message, const AgentIdentity& agent,
                                                        Moment now, bool noted) {
    const auto number = agentMessages_.queue(message, now);
    if (number && noted) agentActed(toText(withoutPicture(message)), agent, now);
    return number;
}

std::optional<std::string> Visitor::takeAgentMessage() {
    auto message = agentMessages_.take();
    if (message) observer_.visitorChanged(*this);
    return message;
}

void Visitor::receive(const ProtoMessage& event, Moment now) {
    const auto time = event.has_time() ? std::optional<std::uint64_t>(event.time()) : std::nullopt;
    const bool empty = !event.has_pagechange() && !event.has_tag() && event.screenshotevent().empty() &&
                       event.clickevent().empty() && event.usertag().empty();
    if (empty) {
        ++counters_.pings;
        lastPing_ = now;
        line_.ping(now, time);
    }
    if (event.has_pagechange()) {
        ++counters_.pages;
        page_ = boundedText(event.pagechange(), kMaxPageBytes);
        add("page", page_, now, time);
    }
    for (const auto& screenshot : event.screenshotevent())
        receiveFrame(screenshot.image(), time, now);
    for (const auto& tap : event.clickevent())
        receiveTap(tap, time, now);
    if (event.has_tag()) {
        ++counters_.tags;
        add("tag", event.tag(), now, time);
    }
    for (const auto& tag : event.usertag())
        receiveUserTag(tag, time, now);
}

void Visitor::receiveFrame(const std::string& image, std::optional<std::uint64_t> time, Moment now) {
    const auto size = image.size() <= kMaxPictureBytes ? jpegSize(image) : std::nullopt;
    if (!size) {
        ++counters_.invalidFrames;
        warn("A picture was not a JPEG or too large, and was dropped", now);
        return;
    }
    ++counters_.frames;
    frameRate_.add(now, 1);
    if (!lastFrame_ || lastFrame_->size != *size) {
        add("picture", std::to_string(size->width) + " \xC3\x97 " + std::to_string(size->height), now, time);
    }
    lastFrame_ = std::make_shared<const Frame>(Frame{counters_.frames, now, *size, image});
    observer_.frameArrived(*this);
}

void Visitor::receiveTap(const ProtoClickEvent& tap, std::optional<std::uint64_t> time, Moment now) {
    if (!std::isfinite(tap.x()) || !std::isfinite(tap.y())) {
        warn("A tap without a finite position was dropped", now);
        return;
    }
    ++counters_.taps;
    json detail = {{"x", tap.x()}, {"y", tap.y()}};
    if (lastFrame_)
        detail["frame"] = {{"width", lastFrame_->size.width}, {"height", lastFrame_->size.height}};
    add("tap", "", now, time, std::move(detail));
}

void Visitor::receiveUserTag(const UserTag& tag, std::optional<std::uint64_t> time, Moment now) {
    ++counters_.userTags;
    userTag_ = userTagJson(tag, kMaxIdentifierBytes, kMaxLabels);
    add("userTag", "", now, time, userTag_);
}

void Visitor::add(std::string kind, std::string text, Moment now, std::optional<std::uint64_t> time,
                  json detail) {
    timeline_.add({0, now, time, std::move(kind), std::move(text), std::move(detail)});
    observer_.visitorChanged(*this);
}

json Visitor::summary(Moment now) const {
    const Counters& c = counters_;
    return {
        {"id", std::to_string(number_)},
        {"tenantId", tenantId_},
        {"sessionId", sessionId_},
        {"visitorId", visitorId_},
        {"visitId", visitId_},
        {"shareId", shareId_},
        {"state", name(state_)},
        {"transport", transport_ ? json(name(*transport_)) : json()},
        {"page", page_},
        {"forced", forced_},
        {"screen", {{"width", screenWidth_}, {"height", screenHeight_}}},
        {"picture",
         lastFrame_ ? json{{"width", lastFrame_->size.width}, {"height", lastFrame_->size.height}} : json()},
        {"userTag", userTag_},
        {"recording", recording_},
        {"firstSeenAt", milliseconds(firstSeen_)},
        {"startedAt", milliseconds(startedAt_)},
        {"endedAt", milliseconds(endedAt_)},
        {"lastSeenAt", milliseconds(lastSeen_)},
        {"lastPingAt", milliseconds(lastPing_)},
        {"framesPerSecond", frameRate_.perSecond(now)},
        {"bytesPerSecond", byteRate_.perSecond(now)},
        {"connected", connected_},
        {"endReason", endReason_ ? json(name(*endReason_)) : json()},
        {"line", line_.toJson(now)},
        {"pictureAt", lastFrame_ ? json(lastFrame_->at.time_since_epoch().count()) : json()},
        {"queuedMessages", agentMessages_.waiting()},
        {"deliveredMessages", agentMessages_.delivered()},
        {"fasterPolling", agentMessages_.askedForFasterPolling()},
        {"consent", agentMessages_.consent()},
        {"lastTimelineSeq", timeline_.lastSequence()},
        {"counters",
         {{"frames", c.frames},
          {"invalidFrames", c.invalidFrames},
          {"pages", c.pages},
          {"taps", c.taps},
          {"pings", c.pings},
          {"tags", c.tags},
          {"userTags", c.userTags},
          {"inits", c.inits},
          {"gets", c.gets},
          {"posts", c.posts},
          {"deletes", c.deletes},
          {"sockets", c.sockets},
          {"socketFrames", c.socketFrames},
          {"disconnects", c.disconnects},
          {"bytes", c.bytes},
          {"warnings", c.warnings}}}};
}

}  // namespace merovanta::devservice
