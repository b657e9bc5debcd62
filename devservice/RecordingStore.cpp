#include "RecordingStore.h"

#include <cerrno>
#include <charconv>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

namespace merovanta::devservice {
namespace {

constexpr std::int64_t kVersion = 1;
// The live sessions wait meanwhile.
constexpr int kMostDroppedAtOnce = 4;
// Times are milliseconds since 1970. Numbers of recordings are never used again.
constexpr const char* kTables[] = {
    "CREATE TABLE recordings (id INTEGER PRIMARY KEY AUTOINCREMENT, tenant TEXT NOT NULL, session TEXT NOT "
    "NULL, "
    "visitor TEXT NOT NULL DEFAULT '', code TEXT NOT NULL DEFAULT '', name TEXT NOT NULL DEFAULT '', "
    "page TEXT NOT NULL DEFAULT '', screenWidth INTEGER NOT NULL DEFAULT 0, "
    "screenHeight INTEGER NOT NULL DEFAULT 0, startedAt INTEGER NOT NULL, lastAt INTEGER NOT NULL, "
    "endedAt INTEGER, ending TEXT NOT NULL DEFAULT '', off INTEGER NOT NULL DEFAULT 0, "
    "pictures INTEGER NOT NULL DEFAULT 0, events INTEGER NOT NULL DEFAULT 0, chats INTEGER NOT NULL DEFAULT "
    "0, "
    "acts INTEGER NOT NULL DEFAULT 0, bytes INTEGER NOT NULL DEFAULT 0, labels TEXT NOT NULL DEFAULT '[]')",
    "CREATE INDEX recordingsByStart ON recordings (startedAt)",
    // Holds all that is asked for once a second.
    "CREATE INDEX recordingsByEnd ON recordings (endedAt, bytes)",
    "CREATE INDEX recordingsBySession ON recordings (session, tenant)",
    "CREATE TABLE pictures (recording INTEGER, number INTEGER, at INTEGER NOT NULL, offset INTEGER NOT NULL, "
    "length INTEGER NOT NULL, PRIMARY KEY (recording, number)) WITHOUT ROWID",
    "CREATE TABLE events (recording INTEGER, number INTEGER, at INTEGER NOT NULL, kind TEXT NOT NULL, "
    "text TEXT NOT NULL, detail TEXT NOT NULL, PRIMARY KEY (recording, number)) WITHOUT ROWID",
    "CREATE TABLE notes (id INTEGER PRIMARY KEY AUTOINCREMENT, recording INTEGER NOT NULL, writtenAt INTEGER "
    "NOT "
    "NULL, moment INTEGER, author TEXT NOT NULL, text TEXT NOT NULL)",
    "CREATE INDEX notesByRecording ON notes (recording)",
    "CREATE VIRTUAL TABLE search USING fts5(code, visitor, page, tag, agent, label, note, "
    "tokenize = 'unicode61 remove_diacritics 2')",
};

std::optional<std::int64_t> recordingOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    std::int64_t id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    if (error != std::errc() || std::string_view(end) != ".jpegs") return std::nullopt;
    return id;
}

// What visitors showed is nobody else's business. The log beside the index takes over its permissions.
std::optional<std::string> makeFiles(const std::filesystem::path& directory) {
    using std::filesystem::perms;
    const auto pictures = directory / "pictures";
    const auto index = directory / "index.sqlite";
    std::error_code error;
    std::filesystem::create_directories(pictures, error);
    if (error) return "cannot make " + pictures.string() + ": " + error.message();
    if (!std::ofstream(index, std::ios::app))
        return "cannot write to " + index.string() + ": " + std::generic_category().message(errno);
    std::filesystem::permissions(pictures, perms::owner_all, error);
    std::filesystem::permissions(index, perms::owner_read | perms::owner_write, error);
    return std::nullopt;
}

}  // namespace

std::optional<std::string> RecordingStore::open(const std::filesystem::path& directory,
                                                const Limits& limits) {
    directory_ = directory;
    limits_ = limits;
    if (auto problem = makeFiles(directory)) return problem;
    index_.open(directory / "index.sqlite");
    index_.begin();
    makeTables();
    recover();
    index_.commit();
    if (auto problem = index_.takeProblem()) {
        index_.close();
        return "cannot use " + (directory / "index.sqlite").string() + ": " + *problem;
    }
    sweepFiles();
    return std::nullopt;
}

std::filesystem::path RecordingStore::pictures(std::int64_t recording) const {
    return directory_ / "pictures" / (std::to_string(recording) + ".jpegs");
}

void RecordingStore::makeTables() {
    SqliteStatement version = index_.prepare("PRAGMA user_version");
    const std::int64_t found = version.next() ? version.integer(0) : 0;
    if (found == kVersion) return;
    if (found != 0) return index_.fail("it is of another version of this program");
    for (const char* table : kTables)
        index_.run(table);
    index_.run("PRAGMA user_version = " + std::to_string(kVersion));
}

// The index is written after the pictures that it names, but a machine that loses its power may have kept the
// index alone.
void RecordingStore::recover() {
    std::vector<std::int64_t> unfinished;
    SqliteStatement query = index_.prepare("SELECT id FROM recordings WHERE endedAt IS NULL");
    while (query.next())
        unfinished.push_back(query.integer(0));
    for (const std::int64_t id : unfinished) {
        std::error_code error;
        const auto size = std::filesystem::file_size(pictures(id), error);
        const auto bytes = error ? std::int64_t{0} : static_cast<std::int64_t>(size);
        index_.run("DELETE FROM pictures WHERE recording = ? AND offset + length > ?", id, bytes);
        index_.run(
            "UPDATE recordings SET pictures = (SELECT count(*) FROM pictures WHERE recording = id), "
            "events = (SELECT count(*) FROM events WHERE recording = id), endedAt = lastAt, "
            "ending = 'service' WHERE id = ?",
            id);
    }
}

// Files whose recording was deleted when the process ended.
void RecordingStore::sweepFiles() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(directory_ / "pictures", error)) {
        const auto id = recordingOf(entry.path());
        if (!id) continue;
        SqliteStatement known = index_.prepare("SELECT 1 FROM recordings WHERE id = ?");
        known.bind(*id);
        if (!known.next() && !index_.failed()) std::filesystem::remove(entry.path(), error);
    }
}

std::uint64_t RecordingStore::bytes() {
    SqliteStatement sum = index_.prepare("SELECT coalesce(sum(bytes), 0) FROM recordings");
    return sum.next() ? static_cast<std::uint64_t>(sum.integer(0)) : 0;
}

bool RecordingStore::remove(std::int64_t recording) {
    const bool found = drop(recording);
    if (found) forgetWords();
    return found;
}

bool RecordingStore::drop(std::int64_t recording) {
    index_.begin();
    for (const char* table : {"pictures", "events", "notes"})
        index_.run(std::string("DELETE FROM ") + table + " WHERE recording = ?", recording);
    index_.run("DELETE FROM search WHERE rowid = ?", recording);
    index_.run("DELETE FROM recordings WHERE id = ?", recording);
    const bool found = !index_.failed() && index_.changes() > 0;
    index_.commit();
    std::error_code ignored;  // swept at the next start
    if (found && !index_.failed()) std::filesystem::remove(pictures(recording), ignored);
    return found;
}

// The search keeps the words of what was deleted until it is put in order.
void RecordingStore::forgetWords() {
    index_.run("INSERT INTO search (search) VALUES ('optimize')");
}

std::optional<std::int64_t> RecordingStore::oldestEnded(Moment before) {
    SqliteStatement oldest =
        index_.prepare("SELECT id FROM recordings WHERE endedAt < ? ORDER BY endedAt, id LIMIT 1");
    oldest.bind(before.time_since_epoch().count());
    return oldest.next() ? std::optional(oldest.integer(0)) : std::nullopt;
}

bool RecordingStore::prune(Moment now) {
    bool enough = true;
    int dropped = 0;
    while (dropped < kMostDroppedAtOnce && !index_.failed()) {
        auto victim = oldestEnded(now - limits_.age);
        if (!victim) {
            if (bytes() <= limits_.bytes) break;
            victim = oldestEnded(Moment::max());
            enough = victim.has_value();
        }
        if (!victim) break;
        drop(*victim);
        ++dropped;
    }
    if (dropped > 0) forgetWords();
    return enough;
}

}  // namespace merovanta::devservice
