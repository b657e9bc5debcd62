#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace merovanta {

/// The application's small persistent values. Thread: main.
class UserDefaults {
 public:
    virtual ~UserDefaults() = default;

    /// The stored text, else the registered default, else nothing.
    [[nodiscard]] virtual std::optional<std::string> string(std::string_view key) = 0;
    virtual void set(std::string_view key, std::string_view value) = 0;
    virtual void remove(std::string_view key) = 0;

    /// What string() answers while nothing is stored; lasts until the process ends.
    virtual void registerDefault(std::string_view key, std::string_view value) = 0;

    /// Writes what changed to the disk before it returns.
    virtual void synchronize() = 0;
};

}  // namespace merovanta
