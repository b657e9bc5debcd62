#pragma once

#include <panoptra.pb.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Moment.h"

namespace merovanta::devservice {

class Visitor;

/// Writes what visitors sent to a directory, for tests of what left their process: `events.jsonl` with one
/// line an event, and each picture as `<visitor>-<number>.jpg` (`.bin` when it is no JPEG). Grows without
/// bound.
class Recorder {
 public:
    /// Creates the directory; returns what went wrong, if anything.
    std::optional<std::string> open(const std::filesystem::path& directory);

    /// Does nothing until opened, like the next.
    void record(const Visitor& visitor, std::string_view kind, std::string_view body, Moment now);
    void record(const Visitor& visitor, const com::merovanta::panoptra::ProtoMessageList& events, Moment now);

 private:
    void writeEvent(const Visitor& visitor, const com::merovanta::panoptra::ProtoMessage& event, Moment now);
    nlohmann::json writePicture(const Visitor& visitor, const std::string& image);
    void writeLine(const Visitor& visitor, nlohmann::json line, Moment now);

    std::filesystem::path directory_;
    std::ofstream lines_;
    std::uint64_t pictures_ = 0;
};

}  // namespace merovanta::devservice
