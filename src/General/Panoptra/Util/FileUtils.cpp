#include "General/Panoptra/Util/FileUtils.h"

#include <fcntl.h>
#include <unistd.h>

#include <boost/url/pct_string_view.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

namespace {

std::string percentDecoded(std::string_view text) {
    const auto encoded = boost::urls::make_pct_string_view(text);
    if (encoded.has_error()) return std::string(text);
    auto decoded = encoded->decode();
    return encodeJson(decoded) ? decoded : std::string(text);
}

StringError lastError() {
    return StringError(std::system_category().message(errno));
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

std::optional<std::string> FileUtils::fileNameOf(std::string_view path) {
    const std::string decoded = percentDecoded(path);
    std::string name = decoded.substr(decoded.find_last_of('/') + 1);
    const bool namesNoFile =
        name.empty() || name == "." || name == ".." || name.find('\0') != std::string::npos;
    if (namesNoFile) return std::nullopt;
    return name;
}

std::optional<StringError> FileUtils::writePrivateFile(const std::string& directory, const std::string& name,
                                                       std::string_view bytes) {
    // Written beside its place first: nobody ever sees half a file, and no link is followed.
    std::string part = directory + "/.part-XXXXXX";
    const int file = mkostemp(part.data(), O_CLOEXEC);
    if (file < 0) return lastError();
    std::optional<StringError> error;
    if (!writeAll(file, bytes)) error = lastError();
    if (close(file) != 0 && !error) error = lastError();
    if (!error && std::rename(part.c_str(), (directory + "/" + name).c_str()) != 0) error = lastError();
    if (error) unlink(part.c_str());
    return error;
}

}  // namespace merovanta
