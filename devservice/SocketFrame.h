#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <variant>

namespace merovanta::devservice {

/// What a test has the service send down a visitor's socket, besides agent messages.
struct SocketFrame {
    enum class Kind {
        Text,
        Binary,
        Close,  ///< a closing handshake with `code`
        Drop    ///< the connection is closed without one
    };

    static constexpr std::size_t kMaxBytes = 64U << 20U;
    static constexpr std::size_t kMaxCount = 10'000;

    Kind kind = Kind::Text;
    std::shared_ptr<const std::string> payload;
    std::uint16_t code = 0;
    /// How often the frame is sent.
    std::size_t count = 1;

    /// The frame that a request of the control API describes (see README.md), or what is wrong with it.
    static std::variant<SocketFrame, std::string> parse(const nlohmann::json& description);
};

}  // namespace merovanta::devservice
