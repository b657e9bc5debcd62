#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>

#include "Response.h"

namespace merovanta::devservice {

/// One way in which an endpoint misbehaves on demand.
struct Fault {
    enum class Kind {
        Delay,     ///< answers `value` milliseconds late
        Drop,      ///< closes the connection before replying
        Truncate,  ///< closes the connection in the middle of the body
        Status,    ///< replies with the status `value`
        Empty,     ///< replies with an empty body
        Garbage,   ///< replies with bytes that are no JSON
        Large      ///< follows the reply with spaces up to `value` bytes
    };

    /// What a reply needs besides a body of its own.
    struct Distortion {
        std::size_t padding = 0;  ///< spaces to be sent after the body
        std::size_t missing = 0;  ///< bytes that are announced and not sent
    };

    Kind kind = Kind::Drop;
    /// 0 for the kinds that have none.
    std::size_t value = 0;
    /// How many requests it still hits; all when absent.
    std::optional<std::size_t> count;

    /// The fault with this name, whose value and count are checked; `value` has a default for each kind.
    static std::optional<Fault> make(std::string_view kind, std::optional<std::size_t> value,
                                     std::optional<std::size_t> count);

    /// Whether the reply's body is not what it should be.
    bool changesBody() const { return kind != Kind::Delay && kind != Kind::Drop && kind != Kind::Status; }

    /// Makes the body what the kind says.
    Distortion distort(Response& response) const;

    nlohmann::json toJson() const;
};

}  // namespace merovanta::devservice
