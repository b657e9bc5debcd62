#include "RecordingWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "JsonBody.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

// What a row costs beside its contents, and a recording without any, about.
constexpr std::int64_t kRowBytes = 40;
constexpr std::int64_t kRecordingBytes = 1000;

std::int64_t count(Moment moment) {
    return moment.time_since_epoch().count();
}

}  // namespace

RecordingWriter::RecordingWriter(RecordingStore& store, const std::string& tenant, const std::string& session,
                                 Moment now)
    : store_(store), index_(store.index()) {
    index_.begin();
    if (!resume(tenant, session)) begin(tenant, session, now);
    SqliteStatement end =
        index_.prepare("SELECT coalesce(max(offset + length), 0) FROM pictures WHERE recording = ?");
    end.bind(id_);
    const auto offset = end.next() ? static_cast<std::uint64_t>(end.integer(0)) : 0;
    if (index_.failed()) return;
    if (auto problem = file_.open(store.pictures(id_), offset)) index_.fail(std::move(*problem));
}

bool RecordingWriter::resume(const std::string& tenant, const std::string& session) {
    SqliteStatement row = index_.prepare(
        "SELECT id, startedAt, lastAt, (SELECT coalesce(max(number), 0) FROM pictures WHERE recording = id), "
        "(SELECT coalesce(max(number), 0) FROM events WHERE recording = id), chats, acts, off, visitor, "
        "code, name, page, screenWidth, screenHeight, "
        "(SELECT coalesce(sum(length(text) + length(detail) + ?), 0) FROM events WHERE recording = id) "
        "FROM recordings WHERE session = ? AND tenant = ? ORDER BY id DESC LIMIT 1");
    row.bind(kRowBytes).bind(session).bind(tenant);
    if (!row.next()) return false;
    id_ = row.integer(0);
    startedAt_ = Moment(std::chrono::milliseconds(row.integer(1)));
    lastAt_ = Moment(std::chrono::milliseconds(row.integer(2)));
    pictures_ = row.integer(3);
    events_ = row.integer(4);
    chats_ = row.integer(5);
    acts_ = row.integer(6);
    off_ = row.integer(7) != 0;
    facts_ = {row.text(8),
              row.text(9),
              row.text(10),
              row.text(11),
              {},
              static_cast<int>(row.integer(12)),
              static_cast<int>(row.integer(13))};
    eventBytes_ = row.integer(14);
    SqliteStatement words = index_.prepare("SELECT visitor, page, tag, agent FROM search WHERE rowid = ?");
    words.bind(id_);
    if (words.next()) {
        names_ = WordList(words.text(0));
        pages_ = WordList(words.text(1));
        tags_ = WordList(words.text(2));
        agents_ = WordList(words.text(3));
    }
    changed_ = true;
    return true;
}

void RecordingWriter::begin(const std::string& tenant, const std::string& session, Moment now) {
    startedAt_ = lastAt_ = now;
    index_.run("INSERT INTO recordings (tenant, session, startedAt, lastAt) VALUES (?, ?, ?, ?)", tenant,
               session, count(now), count(now));
    if (index_.failed()) return;
    id_ = index_.lastId();
    names_.add(tenant);
    index_.run("INSERT INTO search (rowid, visitor) VALUES (?, ?)", id_, names_.lines());
}

void RecordingWriter::switchOff(bool off) {
    off_ = off;
    index_.begin();
    index_.run("UPDATE recordings SET off = ? WHERE id = ?", std::int64_t{off}, id_);
}

// Clocks are set back now and then; a recording only goes forward.
Moment RecordingWriter::advance(Moment at) {
    changed_ = true;
    return lastAt_ = std::max(at, lastAt_);
}

void RecordingWriter::addPicture(std::string_view jpeg, Moment at) {
    if (pictures_ >= kMaxPictures) return;
    const std::uint64_t offset = file_.end();
    if (auto problem = file_.append(jpeg)) return index_.fail(std::move(*problem));
    index_.begin();
    index_.run("INSERT INTO pictures VALUES (?, ?, ?, ?, ?)", id_, ++pictures_, count(advance(at)),
               static_cast<std::int64_t>(offset), static_cast<std::int64_t>(jpeg.size()));
}

void RecordingWriter::addEvent(std::string_view kind, std::string_view text, const nlohmann::json& detail,
                               Moment at) {
    const std::string details = toText(detail);
    const auto bytes = static_cast<std::int64_t>(text.size() + details.size()) + kRowBytes;
    if (eventBytes_ + bytes > kMaxEventBytes) return;
    eventBytes_ += bytes;
    index_.begin();
    index_.run("INSERT INTO events VALUES (?, ?, ?, ?, ?, ?)", id_, ++events_, count(advance(at)), kind, text,
               details);
    note(kind, std::string(text), detail);
}

// What the list says about the events, and what can be searched for.
void RecordingWriter::note(std::string_view kind, const std::string& text, const nlohmann::json& detail) {
    if (kind == "chat") ++chats_;
    if (kind == "agent") ++acts_;
    const auto who = detail.is_object() ? detail.value("agent", nlohmann::json()) : nlohmann::json();
    const std::string agent = who.is_object() ? textMember(who, "name") : std::string();
    const bool page = (kind == "page" || kind == "init" || kind == "connect") && pages_.add(text);
    const bool tag = kind == "tag" && tags_.add(text);
    const bool known = !agents_.add(agent);
    wordsChanged_ = wordsChanged_ || page || tag || !known;
}

void RecordingWriter::describe(const RecordingFacts& facts) {
    if (facts == facts_) return;
    facts_ = facts;
    changed_ = wordsChanged_ = true;
    names_.add(facts.name);
    names_.add(facts.visitor);
}

void RecordingWriter::end(Moment at) {
    endedAt_ = count(advance(at));
}

void RecordingWriter::goOn() {
    changed_ = true;
    endedAt_.reset();
}

void RecordingWriter::flush() {
    if (changed_) {
        index_.begin();
        const auto bytes =
            kRecordingBytes + static_cast<std::int64_t>(file_.end()) + pictures_ * kRowBytes + eventBytes_;
        index_.run(
            "UPDATE recordings SET lastAt = ?, endedAt = ?, ending = ?, pictures = ?, events = ?, chats = ?, "
            "acts = ?, bytes = ?, "
            "visitor = ?, code = ?, name = ?, page = ?, screenWidth = ?, screenHeight = ? WHERE id = ?",
            count(lastAt_), endedAt_, facts_.ending, pictures_, events_, chats_, acts_, bytes, facts_.visitor,
            facts_.code, facts_.name, facts_.page, std::int64_t{facts_.screenWidth},
            std::int64_t{facts_.screenHeight}, id_);
    }
    if (wordsChanged_) {
        index_.begin();
        index_.run("UPDATE search SET code = ?, visitor = ?, page = ?, tag = ?, agent = ? WHERE rowid = ?",
                   facts_.code, names_.lines(), pages_.lines(), tags_.lines(), agents_.lines(), id_);
    }
    changed_ = wordsChanged_ = false;
}

}  // namespace merovanta::devservice
