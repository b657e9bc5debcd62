#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Moment.h"
#include "RecordingQuery.h"
#include "RecordingStore.h"

namespace merovanta::devservice {

/// The recordings as agents see them: to be found, looked at and written on. What goes wrong is a problem of
/// the store's index.
class RecordingCatalog {
 public:
    static constexpr std::size_t kMaxLabels = 20;
    static constexpr std::size_t kMaxLabelBytes = 64;
    static constexpr std::int64_t kMaxNotes = 500;
    static constexpr std::size_t kMaxNoteBytes = 2000;

    explicit RecordingCatalog(RecordingStore& store) : store_(store), index_(store.index()) {}

    /// How many match, and the latest of them: {"total", "recordings"}.
    nlohmann::json list(const RecordingQuery& query);
    /// One with its notes; null when there is none.
    nlohmann::json find(std::int64_t recording);
    /// When its pictures came and what happened, as JSON text; times since the recording's start.
    std::string contents(std::int64_t recording);
    /// A picture, counted from 1; nothing when there is none.
    std::optional<std::string> picture(std::int64_t recording, std::int64_t number);

    /// Each of these is for a recording that exists. The texts are bounded by the caller.
    void setLabels(std::int64_t recording, const std::vector<std::string>& labels);
    /// `moment` is where in the recording the note belongs, if anywhere. False when there are too many.
    bool addNote(std::int64_t recording, const std::string& author, const std::string& text,
                 std::optional<std::int64_t> moment, Moment now);
    /// False when there is no such note.
    bool removeNote(std::int64_t recording, std::int64_t note);

 private:
    nlohmann::json notes(std::int64_t recording);
    void updateNoteWords(std::int64_t recording);

    RecordingStore& store_;
    SqliteDatabase& index_;
};

}  // namespace merovanta::devservice
