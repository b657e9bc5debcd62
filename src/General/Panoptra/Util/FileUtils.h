#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "General/StringError.h"

namespace merovanta {

class FileUtils {
 public:
    FileUtils() = delete;

    /// The last component of a path, percent-decoded before it is taken apart; a text that cannot be decoded
    /// is taken as it is. Absent if nothing is left that names a file. Any thread.
    [[nodiscard]] static std::optional<std::string> fileNameOf(std::string_view path);

    /// Writes a file that only its owner can read, in the place of any earlier one; a link of that name is
    /// replaced, not followed. The name must be a single component. Any thread.
    [[nodiscard]] static std::optional<StringError> writePrivateFile(const std::string& directory,
                                                                     const std::string& name,
                                                                     std::string_view bytes);
};

}  // namespace merovanta
