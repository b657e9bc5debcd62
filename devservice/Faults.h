#pragma once

#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Fault.h"
#include "Request.h"

namespace merovanta::devservice {

/// Which of the visitors' endpoints misbehave. The endpoint "*" stands for all that have no fault of their
/// own; the console never misbehaves.
class Faults {
 public:
    /// Sets one as the command line writes it, "ENDPOINT=KIND[:VALUE][,COUNT]"; false when it is none.
    bool set(std::string_view text);

    /// Takes over the faults of the endpoints that `changes` names, null for none, and leaves the others.
    /// Returns what is wrong with them, if anything; nothing has been taken over then.
    std::optional<std::string> apply(const nlohmann::json& changes);

    void clear();

    /// The fault that this request meets; it counts as used then.
    std::optional<Fault> take(const Request& request);

    /// Every endpoint with its fault or null.
    nlohmann::json toJson() const;

    /// `observer` is called after each change.
    void observe(std::function<void()> observer) { observer_ = std::move(observer); }

 private:
    void changed() const;

    std::map<std::string, Fault, std::less<>> faults_;
    std::function<void()> observer_;
};

}  // namespace merovanta::devservice
