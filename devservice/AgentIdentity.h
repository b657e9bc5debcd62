#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace merovanta::devservice {

/// Which agent did something, as it is kept with what was done: the name is that of the moment. Without an id
/// it was a program that used the control API.
struct AgentIdentity {
    std::string id, name;

    /// Null for a program.
    nlohmann::json toJson() const {
        return id.empty() ? nlohmann::json() : nlohmann::json{{"id", id}, {"name", name}};
    }
};

}  // namespace merovanta::devservice
