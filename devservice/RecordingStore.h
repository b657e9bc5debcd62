#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "Moment.h"
#include "SqliteDatabase.h"

namespace merovanta::devservice {

/// The directory of the recorded sessions: an index in SQLite, and a file with the pictures of each. Whatever
/// ends the process, the index opens again and names no picture that is not there.
class RecordingStore {
 public:
    /// How long and how much is kept.
    struct Limits {
        std::chrono::days age{30};
        std::uint64_t bytes = 5'000'000'000;
    };

    /// Makes the directory if there is none, and mends what a process left that was ended in the middle.
    /// Returns what went wrong, if anything; the store is not open then.
    std::optional<std::string> open(const std::filesystem::path& directory, const Limits& limits);
    bool isOpen() const { return index_.isOpen(); }

    SqliteDatabase& index() { return index_; }
    const Limits& limits() const { return limits_; }
    /// Where the pictures of a recording are.
    std::filesystem::path pictures(std::int64_t recording) const;

    /// How much of `limits` is taken, live sessions included.
    std::uint64_t bytes();

    /// Deletes a recording; false if there is none.
    bool remove(std::int64_t recording);
    /// Deletes what is too old, and the oldest of what is too much, a few at a time. Sessions that go on are
    /// left alone; false when they alone are too much.
    bool prune(Moment now);

 private:
    void makeTables();
    void recover();
    void sweepFiles();
    bool drop(std::int64_t recording);
    void forgetWords();
    /// The ended recording that goes first, if there is one; only those that ended before a moment.
    std::optional<std::int64_t> oldestEnded(Moment before);

    std::filesystem::path directory_;
    Limits limits_;
    SqliteDatabase index_;
};

}  // namespace merovanta::devservice
