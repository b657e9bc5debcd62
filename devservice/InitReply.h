#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace merovanta::devservice {

/// What the service answers when a visitor initialises a session. Optional values that are absent are left
/// out of the reply.
struct InitReply {
    bool startMonitoring = true;                   // "s"
    std::optional<std::string> startType = "u";    // "st"
    bool ignoreVisitor = false;                    // "x"
    std::optional<std::string> storageType = "l";  // "fsTy"
    std::optional<bool> disableWebSocket;          // "pnWS"
    std::optional<bool> chatActivated;             // "cA"
    std::vector<std::string> maskedTags;           // "ios"."blacklist"
    std::vector<std::string> maskedClasses;        // "ios"."blacklistClasses"

    /// The reply's body for a visitor at this address.
    nlohmann::json body(const std::string& visitorAddress) const;

    /// The settings as the control API shows them: every key of the reply that can be set, flat, null when
    /// absent.
    nlohmann::json settings() const;

    /// Takes over the settings that `changes` names and leaves the others. Returns what is wrong with them,
    /// if anything; nothing has been taken over then.
    std::optional<std::string> apply(const nlohmann::json& changes);
};

}  // namespace merovanta::devservice
