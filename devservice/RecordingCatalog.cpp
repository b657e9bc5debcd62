#include "RecordingCatalog.h"

#include <nlohmann/json.hpp>

#include "JpegHeader.h"
#include "PictureFile.h"
#include "Text.h"

namespace merovanta::devservice {
namespace {

using nlohmann::json;

constexpr const char* kColumns =
    "SELECT id, tenant, visitor, code, name, page, startedAt, lastAt, endedAt, ending, off, pictures, "
    "events, chats, "
    "acts, bytes, labels, screenWidth, screenHeight, (SELECT count(*) FROM notes WHERE recording = "
    "recordings.id) "
    "FROM recordings ";

json toJson(const SqliteStatement& row) {
    return {{"id", std::to_string(row.integer(0))},
            {"tenantId", row.text(1)},
            {"visitorId", row.text(2)},
            {"code", row.text(3)},
            {"name", row.text(4)},
            {"page", row.text(5)},
            {"startedAt", row.integer(6)},
            {"lastAt", row.integer(7)},
            {"endedAt", row.isNull(8) ? json() : json(row.integer(8))},
            {"ending", row.text(9)},
            {"off", row.integer(10) != 0},
            {"pictures", row.integer(11)},
            {"events", row.integer(12)},
            {"chats", row.integer(13)},
            {"acts", row.integer(14)},
            {"bytes", row.integer(15)},
            {"labels", json::parse(row.text(16), nullptr, false)},
            {"screen", {{"width", row.integer(17)}, {"height", row.integer(18)}}},
            {"notes", row.integer(19)}};
}

}  // namespace

json RecordingCatalog::list(const RecordingQuery& query) {
    // A session that was never recorded leaves only its switch.
    std::string where = "WHERE pictures + events > 0 AND " + query.condition;
    if (query.from) where += " AND startedAt >= " + std::to_string(*query.from);
    if (query.to) where += " AND startedAt < " + std::to_string(*query.to);
    if (!query.match.empty()) where += " AND id IN (SELECT rowid FROM search WHERE search MATCH ?)";
    const auto prepare = [&](const std::string& sql) {
        SqliteStatement statement = index_.prepare(sql);
        if (!query.match.empty()) statement.bind(query.match);
        return statement;
    };
    SqliteStatement count = prepare("SELECT count(*) FROM recordings " + where);
    json result = {{"total", count.next() ? count.integer(0) : 0}, {"recordings", json::array()}};
    SqliteStatement rows = prepare(kColumns + where + " ORDER BY startedAt DESC, id DESC LIMIT ? OFFSET ?");
    rows.bind(query.limit).bind(query.offset);
    while (rows.next())
        result["recordings"].push_back(toJson(rows));
    return result;
}

json RecordingCatalog::find(std::int64_t recording) {
    SqliteStatement row = index_.prepare(std::string(kColumns) + "WHERE id = ?");
    row.bind(recording);
    if (!row.next()) return nullptr;
    json result = toJson(row);
    result["notes"] = notes(recording);
    return result;
}

json RecordingCatalog::notes(std::int64_t recording) {
    json result = json::array();
    SqliteStatement rows = index_.prepare(
        "SELECT id, writtenAt, moment, author, text FROM notes WHERE recording = ? ORDER BY moment, id");
    rows.bind(recording);
    while (rows.next()) {
        result.push_back({{"id", std::to_string(rows.integer(0))},
                          {"writtenAt", rows.integer(1)},
                          {"at", rows.isNull(2) ? json() : json(rows.integer(2))},
                          {"author", rows.text(3)},
                          {"text", rows.text(4)}});
    }
    return result;
}

// Made by the database: eight hours of pictures and events are large.
std::string RecordingCatalog::contents(std::int64_t recording) {
    SqliteStatement row = index_.prepare(
        "SELECT (SELECT json_group_array(at - startedAt) FROM (SELECT at FROM pictures WHERE recording = ?1 "
        "ORDER BY number)), (SELECT json_group_array(json_object('at', at - startedAt, 'kind', kind, 'text', "
        "text, "
        "'detail', json(detail))) FROM (SELECT at, kind, text, detail FROM events WHERE recording = ?1 "
        "ORDER BY at, number)) FROM recordings WHERE id = ?1");
    row.bind(recording);
    if (!row.next()) return {};
    return R"({"pictures":)" + row.text(0) + R"(,"events":)" + row.text(1) + "}";
}

std::optional<std::string> RecordingCatalog::picture(std::int64_t recording, std::int64_t number) {
    SqliteStatement row =
        index_.prepare("SELECT offset, length FROM pictures WHERE recording = ? AND number = ?");
    row.bind(recording).bind(number);
    if (!row.next()) return std::nullopt;
    auto picture = PictureFile::read(store_.pictures(recording), static_cast<std::uint64_t>(row.integer(0)),
                                     static_cast<std::size_t>(row.integer(1)));
    return picture && jpegSize(*picture) ? std::move(picture) : std::nullopt;
}

void RecordingCatalog::setLabels(std::int64_t recording, const std::vector<std::string>& labels) {
    std::string lines;
    for (const std::string& label : labels)
        lines += label + "\n";
    index_.begin();
    index_.run("UPDATE recordings SET labels = ? WHERE id = ?", toText(json(labels)), recording);
    index_.run("UPDATE search SET label = ? WHERE rowid = ?", lines, recording);
}

bool RecordingCatalog::addNote(std::int64_t recording, const std::string& author, const std::string& text,
                               std::optional<std::int64_t> moment, Moment now) {
    SqliteStatement count = index_.prepare("SELECT count(*) FROM notes WHERE recording = ?");
    count.bind(recording);
    if (count.next() && count.integer(0) >= kMaxNotes) return false;
    index_.begin();
    index_.run("INSERT INTO notes (recording, writtenAt, moment, author, text) VALUES (?, ?, ?, ?, ?)",
               recording, now.time_since_epoch().count(), moment, author, text);
    updateNoteWords(recording);
    return true;
}

bool RecordingCatalog::removeNote(std::int64_t recording, std::int64_t note) {
    index_.begin();
    index_.run("DELETE FROM notes WHERE recording = ? AND id = ?", recording, note);
    const bool found = index_.changes() > 0;
    updateNoteWords(recording);
    return found;
}

void RecordingCatalog::updateNoteWords(std::int64_t recording) {
    index_.run(
        "UPDATE search SET note = (SELECT coalesce(group_concat(author || ' ' || text, char(10)), '') FROM "
        "notes "
        "WHERE recording = ?1) WHERE rowid = ?1",
        recording);
}

}  // namespace merovanta::devservice
