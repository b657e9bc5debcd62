#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "ContactRegistry.h"
#include "Response.h"

namespace merovanta::devservice {

class ChatSocket;
struct Upgrade;

/// The open chat pages: opens their WebSockets and tells each what has changed. There are fewer of them than
/// contacts, so that a contact whose chat is open is never forgotten.
class ChatSockets {
 public:
    static constexpr std::size_t kMaxSockets = 64;
    static_assert(kMaxSockets < ContactRegistry::kCapacity);

    explicit ChatSockets(ContactRegistry& contacts) : contacts_(contacts) {}

    /// Takes the connection over, or answers why not.
    std::optional<Response> open(Upgrade& upgrade);

    void contactChanged(const Contact& contact);

 private:
    ContactRegistry& contacts_;
    std::vector<std::weak_ptr<ChatSocket>> sockets_;
};

}  // namespace merovanta::devservice
