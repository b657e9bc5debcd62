#pragma once

#include <string>
#include <string_view>

namespace merovanta {

/// Host names as the host application gives them. Any thread.
class HostName {
 public:
    HostName() = delete;

    /// Says in the log what this name should have been if it has a scheme, a path or blanks; no address can
    /// be made with it.
    static void warnIfMalformed(std::string_view name);

    /// The host, with its port, of a name that may have more about it.
    [[nodiscard]] static std::string hostOf(std::string_view name);
};

}  // namespace merovanta
