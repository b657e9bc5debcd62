#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Moment.h"
#include "PictureFile.h"
#include "RecordingStore.h"
#include "WordList.h"

namespace merovanta::devservice {

/// What is known about a recorded session beside what happens in it.
struct RecordingFacts {
    std::string visitor, code, name, page;
    /// Why it is over, as the console's summaries say it; empty while it is not.
    std::string ending;
    int screenWidth = 0, screenHeight = 0;
    bool operator==(const RecordingFacts&) const = default;
};

/// Writes the recording of one live session. What goes wrong is a problem of the store's index, whoever looks
/// there throws this writer away when it finds one.
class RecordingWriter {
 public:
    /// Bounds of one recording; what comes beyond is left out.
    static constexpr std::int64_t kMaxPictures = 500'000;
    static constexpr std::int64_t kMaxEventBytes = 8 << 20;

    /// Goes on with the recording of this session, or begins one.
    RecordingWriter(RecordingStore& store, const std::string& tenant, const std::string& session, Moment now);

    std::int64_t id() const { return id_; }

    /// Whether the agent has switched the recording of this session off.
    bool isOff() const { return off_; }
    void switchOff(bool off);

    void addPicture(std::string_view jpeg, Moment at);
    /// `kind` is that of a timeline's entry, or "chat" or "recording"; `detail` may be null.
    void addEvent(std::string_view kind, std::string_view text, const nlohmann::json& detail, Moment at);
    void describe(const RecordingFacts& facts);
    void end(Moment at);
    /// A session that had ended goes on.
    void goOn();
    bool hasEnded() const { return endedAt_.has_value(); }

    /// Brings the recording's own row and the search up to date; to be called before the store is committed.
    void flush();

 private:
    bool resume(const std::string& tenant, const std::string& session);
    void begin(const std::string& tenant, const std::string& session, Moment now);
    void note(std::string_view kind, const std::string& text, const nlohmann::json& detail);
    Moment advance(Moment at);

    RecordingStore& store_;
    SqliteDatabase& index_;
    PictureFile file_;
    std::int64_t id_ = 0;
    Moment startedAt_{}, lastAt_{};
    std::optional<std::int64_t> endedAt_;
    std::int64_t pictures_ = 0, events_ = 0, eventBytes_ = 0, chats_ = 0, acts_ = 0;
    bool off_ = false, changed_ = false, wordsChanged_ = false;
    RecordingFacts facts_;
    WordList pages_, tags_, agents_, names_;
};

}  // namespace merovanta::devservice
