#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// A request target taken apart leniently: query values arrive percent-encoded or as they are, so an escape
/// that is none stands for itself and "+" is a plus sign.
struct Target {
    std::string path;
    std::map<std::string, std::string, std::less<>> query;

    static Target parse(std::string_view target);

    /// The value of a query key, empty when absent.
    std::string value(std::string_view key) const;
};

/// Some clients put page names into the target without encoding them. Returns the request head with every
/// byte of the target that HTTP forbids percent-encoded, or nothing when the head is fine as it is.
std::optional<std::string> repairRequestHead(std::string_view head);

}  // namespace merovanta::devservice
