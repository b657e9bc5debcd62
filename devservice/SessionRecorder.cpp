#include "SessionRecorder.h"

#include <utility>

#include "JsonBody.h"
#include "Text.h"
#include "Visitor.h"

namespace merovanta::devservice {

using nlohmann::json;

namespace {

constexpr int kSettlesASecond = std::chrono::seconds(1) / SessionRecorder::kSettlePause;
constexpr int kRetryPause = 10 * kSettlesASecond;

Moment momentOf(const json& at) {
    return Moment(std::chrono::milliseconds(at.get<std::int64_t>()));
}

std::string fullName(const json& person) {
    if (!person.is_object()) return {};
    const std::string first = textMember(person, "firstname");
    const std::string last = textMember(person, "lastname");
    return first + (first.empty() || last.empty() ? "" : " ") + last;
}

}  // namespace

SessionRecorder::~SessionRecorder() {
    if (enabled_) settle(currentMoment());
}

void SessionRecorder::open(const std::filesystem::path& directory, const RecordingStore::Limits& limits) {
    enabled_ = true;
    if (auto problem = store_.open(directory, limits)) pause(std::move(*problem));
}

void SessionRecorder::switchOff(Visitor& visitor, bool off, const AgentIdentity& agent, Moment now) {
    Session& session = sessions_[visitor.number()];
    if (off == session.off) return;
    // The switching itself is recorded, before the recording stops and after it goes on.
    if (off) visitor.agentActed("Switched the recording off", agent, now);
    session.off = off;
    if (!off) {
        session.timelineSeen = visitor.timeline().lastSequence();
        session.since = now;
        visitor.agentActed("Switched the recording on", agent, now);
    }
    tell(session, visitor);
}

void SessionRecorder::letGo(std::int64_t recording) {
    for (auto& [number, session] : sessions_) {
        if (!session.writer || session.writer->id() != recording) continue;
        session.writer.reset();
        session.off = true;
    }
}

RecordingWriter* SessionRecorder::writer(const Visitor& visitor) {
    const bool started = visitor.state() != Visitor::State::Waiting;
    if (!enabled_ || !started) return nullptr;
    Session& session = sessions_[visitor.number()];
    if (session.off || pause_ > 0 || !store_.isOpen()) return nullptr;
    if (!session.writer) {
        open(session, visitor, visitor.lastSeen());
        if (!check()) return nullptr;
        session.recorded = true;
        session.off = session.writer->isOff();
    }
    return session.off ? nullptr : session.writer.get();
}

void SessionRecorder::open(Session& session, const Visitor& visitor, Moment now) {
    session.writer = std::make_unique<RecordingWriter>(store_, visitor.tenantId(), visitor.sessionId(), now);
    session.since = now;
}

void SessionRecorder::visitorChanged(const Visitor& visitor) {
    RecordingWriter* const writer = this->writer(visitor);
    if (writer == nullptr) return;
    Session& session = sessions_[visitor.number()];
    for (const json& entry : visitor.timeline().entriesAfter(session.timelineSeen))
        recordEntry(*writer, entry);
    session.timelineSeen = visitor.timeline().lastSequence();
    check();
}

void SessionRecorder::recordEntry(RecordingWriter& writer, const json& entry) {
    const auto& kind = entry["kind"].get_ref<const std::string&>();
    const auto& text = entry["text"].get_ref<const std::string&>();
    const Moment at = momentOf(entry["at"]);
    if (kind == "init" || kind == "connect") writer.goOn();
    writer.addEvent(kind, text, entry.value("detail", json()), at);
    if (kind == "end") writer.end(at);
}

void SessionRecorder::frameArrived(const Visitor& visitor) {
    RecordingWriter* const writer = this->writer(visitor);
    if (writer == nullptr) return;
    writer->addPicture(visitor.lastFrame()->jpeg, visitor.lastSeen());
    check();
}

void SessionRecorder::visitorRemoved(const Visitor& visitor) {
    const auto found = sessions_.find(visitor.number());
    if (found == sessions_.end()) return;
    if (const auto& writer = found->second.writer) {
        if (!writer->hasEnded()) writer->end(visitor.lastSeen());
        writer->flush();
    }
    sessions_.erase(found);
    check();
}

void SessionRecorder::describe(Session& session, const Visitor& visitor, Moment now) {
    const json summary = visitor.summary(now);
    const json& screen = summary["screen"];
    RecordingFacts facts{textMember(summary, "visitorId"),
                         textMember(summary, "shareId"),
                         {},
                         textMember(summary, "page"),
                         textMember(summary, "endReason"),
                         screen["width"],
                         screen["height"]};
    const Contact* const contact = contacts_.find(visitor.tenantId(), facts.visitor);
    if (contact != nullptr) facts.name = fullName(contact->identity);
    if (facts.name.empty()) facts.name = fullName(summary["userTag"]);
    session.writer->describe(facts);
    if (contact != nullptr) recordChat(session, *contact);
}

void SessionRecorder::recordChat(Session& session, const Contact& contact) {
    if (contact.chat.lastSequence() <= session.chatSeen) return;
    for (const json& message : contact.chat.messagesAfter(session.chatSeen)) {
        const Moment at = momentOf(message["at"]);
        if (at < session.since) continue;
        const auto document = message.find("document");
        const bool shared = document != message.end();
        session.writer->addEvent(
            "chat", shared ? textMember(*document, "name") : textMember(message, "text"),
            {{"from", message["from"]}, {"document", shared}, {"agent", message.value("agent", json())}}, at);
    }
    session.chatSeen = contact.chat.lastSequence();
}

bool SessionRecorder::settle(Moment now) {
    const bool again = pause_ == 1;
    if (pause_ > 0 && store_.isOpen()) --pause_;
    for (auto& [number, session] : sessions_) {
        Visitor* const visitor = visitors_.find(std::to_string(number));
        if (visitor == nullptr) continue;
        // What happened while nothing was recorded is not recorded late.
        if (again) session.timelineSeen = visitor->timeline().lastSequence();
        if (pause_ == 0) settle(session, *visitor, now);
        tell(session, *visitor);
    }
    if (!store_.isOpen()) return false;
    const bool written = store_.index().inTransaction();
    store_.index().commit();
    const bool enough = (!again && settled_++ % kSettlesASecond != 0) || store_.prune(now);
    if (!check()) return false;
    if (!enough) {
        pause("the sessions that go on fill all that may be kept");
    } else if (problem_ && written && pause_ == 0) {
        log_ << "merovanta-devservice: recording goes on" << std::endl;
        problem_.reset();
    }
    return true;
}

void SessionRecorder::settle(Session& session, const Visitor& visitor, Moment now) {
    if (!store_.isOpen()) return;
    const bool over = visitor.state() == Visitor::State::Ended;
    if (!session.writer && (session.off || (session.recorded && over))) open(session, visitor, now);
    if (!session.writer) return;
    if (session.writer->isOff() != session.off) session.writer->switchOff(session.off);
    // Its end may have come while nothing was recorded: only what has ended makes room.
    if (over && !session.writer->hasEnded()) session.writer->end(visitor.lastSeen());
    if (!over && session.writer->hasEnded()) session.writer->goOn();
    // Of one that is switched off, or deleted, nothing is said.
    if (!session.off) describe(session, visitor, now);
    session.writer->flush();
}

void SessionRecorder::tell(const Session& session, Visitor& visitor) const {
    const char* const state = session.off ? "off" : problem_ ? "failed" : "on";
    json recording = {{"state", state}};
    if (session.writer) recording["id"] = std::to_string(session.writer->id());
    if (problem_) recording["problem"] = *problem_;
    visitor.setRecording(std::move(recording));
}

bool SessionRecorder::check() {
    auto problem = store_.index().takeProblem();
    if (problem) pause(std::move(*problem));
    return !problem;
}

void SessionRecorder::pause(std::string problem) {
    store_.index().rollback();
    for (auto& [number, session] : sessions_)
        session.writer.reset();
    pause_ = kRetryPause;
    if (!problem_) log_ << "merovanta-devservice: recording stops: " << singleLine(problem) << std::endl;
    problem_ = std::move(problem);
}

}  // namespace merovanta::devservice
