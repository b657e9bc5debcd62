#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Response.h"
#include "VisitorSocket.h"

namespace merovanta::devservice {

struct Upgrade;

/// The visitors' open WebSockets.
class VisitorSockets {
 public:
    explicit VisitorSockets(VisitorStreams& streams) : streams_(streams) {}

    /// Takes the connection over, or answers why not.
    std::optional<Response> open(Upgrade& upgrade);

    /// The visitor's socket, or null.
    std::shared_ptr<VisitorSocket> find(const Visitor& visitor) const;

 private:
    void onOpen(const std::shared_ptr<VisitorSocket>& socket);

    VisitorStreams& streams_;
    std::vector<std::weak_ptr<VisitorSocket>> sockets_;
};

}  // namespace merovanta::devservice
