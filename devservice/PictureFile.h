#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// A file of pictures, one behind the other, that is being written.
class PictureFile {
 public:
    PictureFile() = default;
    ~PictureFile();
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;

    /// Opens the file, made if there is none; what lies behind `end` is not of interest and written over.
    /// Returns what went wrong, if anything.
    std::optional<std::string> open(const std::filesystem::path& path, std::uint64_t end);

    /// Where the next picture will begin.
    std::uint64_t end() const { return end_; }

    /// Writes a picture at the end. After a failure the end is where it was.
    std::optional<std::string> append(std::string_view picture);

    /// The bytes at a place of a file; nothing when there are fewer.
    static std::optional<std::string> read(const std::filesystem::path& path, std::uint64_t offset,
                                           std::size_t length);

 private:
    int descriptor_ = -1;
    std::uint64_t end_ = 0;
};

}  // namespace merovanta::devservice
