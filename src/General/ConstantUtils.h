#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace merovanta {

/// The build-time constants in the property list "Config" of the library's own bundle. Any thread.
class ConstantUtils {
 public:
    ConstantUtils() = delete;

    /// Absent if the bundle, the list or the key is missing, or the value is no string. The list is read
    /// once; a failed reading is tried again at the next call.
    [[nodiscard]] static std::optional<std::string> value(std::string_view key);

    /// The value, or the empty string.
    [[nodiscard]] static std::string valueOrEmpty(std::string_view key);

    /// Reads the list anew at the next call; for a change of platform.
    static void forget();
};

}  // namespace merovanta
