#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "AgentIdentity.h"
#include "Moment.h"

namespace merovanta::devservice {

/// One line of a chat: a text, or a document that one side shares with the other.
struct ChatMessage {
    enum class Author { Visitor, Agent };

    struct Document {
        /// Where the service serves it.
        std::string url;
        std::string name;
        std::string contentType;
        std::size_t bytes = 0;
    };

    static constexpr std::size_t kMaxKeyBytes = 64;

    std::uint64_t sequence = 0;
    Moment at{};
    Author author = Author::Visitor;
    /// Who of the agents, if it was one.
    AgentIdentity agent;
    std::string text;
    /// By which the visitor's page knows its own message again; empty for the agent's.
    std::string key;
    std::optional<Document> document;

    nlohmann::json toJson() const;
};

}  // namespace merovanta::devservice
