#pragma once

#include <string>
#include <utility>

namespace merovanta {

/// The library's one error type: a message for people. Passed as a value, never thrown.
struct StringError {
    std::string mMsg;

    explicit StringError(std::string message) : mMsg(std::move(message)) {}

    [[nodiscard]] const std::string& errorDescription() const { return mMsg; }
    [[nodiscard]] const std::string& failureReason() const { return mMsg; }

    bool operator==(const StringError&) const = default;
};

}  // namespace merovanta
