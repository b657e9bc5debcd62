#include "PictureFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

namespace merovanta::devservice {
namespace {

std::string lastError() {
    return std::generic_category().message(errno);
}

}  // namespace

PictureFile::~PictureFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

std::optional<std::string> PictureFile::open(const std::filesystem::path& path, std::uint64_t end) {
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor_ < 0) return "cannot write to " + path.string() + ": " + lastError();
    end_ = end;
    return std::nullopt;
}

std::optional<std::string> PictureFile::append(std::string_view picture) {
    std::uint64_t at = end_;
    while (!picture.empty()) {
        const ssize_t written = ::pwrite(descriptor_, picture.data(), picture.size(), static_cast<off_t>(at));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return "a picture cannot be written: " + lastError();
        at += static_cast<std::uint64_t>(written);
        picture.remove_prefix(static_cast<std::size_t>(written));
    }
    end_ = at;
    return std::nullopt;
}

std::optional<std::string> PictureFile::read(const std::filesystem::path& path, std::uint64_t offset,
                                             std::size_t length) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes(length, '\0');
    file.seekg(static_cast<std::streamoff>(offset));
    if (!file.read(bytes.data(), static_cast<std::streamsize>(length))) return std::nullopt;
    return bytes;
}

}  // namespace merovanta::devservice
