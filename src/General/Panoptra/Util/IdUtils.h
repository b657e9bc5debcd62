#pragma once

#include <string>

namespace merovanta {

/// Makes and keeps the identifiers of visits, devices and customers. Thread: main.
class IdUtils {
 public:
    IdUtils() = delete;

    /// A random UUID: 36 characters, upper case.
    [[nodiscard]] static std::string newUuid();

    /// Five decimal digits, 10000 to 99999, each equally likely.
    [[nodiscard]] static std::string newShareCode();

    /// The device's vendor identifier. A device without one ends the process.
    [[nodiscard]] static std::string deviceIdentifier();

    /// 32 lower-case hexadecimal digits, made on first use and kept in the user defaults.
    [[nodiscard]] static std::string customerId();

    /// The next customer id is a new one.
    static void forgetCustomerId();
};

}  // namespace merovanta
