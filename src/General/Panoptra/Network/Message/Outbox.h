#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <optional>

#include "General/Panoptra/Network/Message/WireMessages.h"
#include "General/StringError.h"

namespace merovanta {

/// What waits until the transport takes messages again, oldest first. Of pictures only the newest is kept,
/// behind whatever came before it; of all else so many that a long wait costs no memory: then the oldest
/// pings go, then the oldest taps, then the oldest of the rest. Thread: main.
class Outbox {
 public:
    struct Entry {
        ProtoMessage message;
        /// Called once; with an error if the message had to go. That of a picture which a newer one has
        /// replaced hears of no error.
        std::function<void(const std::optional<StringError>&)> callback;
    };

    static constexpr std::size_t maximumEvents = 10'000;

    void put(Entry entry);

    /// Everything, in order; nothing is left.
    [[nodiscard]] std::list<Entry> take();

    /// Drops everything; the callbacks receive the error, but for pictures and pings, which nobody misses.
    void discard(const StringError& error);

    [[nodiscard]] bool isEmpty() const { return mEntries.empty(); }

 private:
    // In the order in which they go.
    enum Kind : std::size_t { ping, tap, other, picture, kinds };

    [[nodiscard]] static Kind kindOf(const ProtoMessage& message);
    [[nodiscard]] Entry takeOldest(Kind kind);
    [[nodiscard]] std::optional<Entry> makeRoom(Kind kind);

    std::list<Entry> mEntries;
    std::array<std::deque<std::list<Entry>::iterator>, kinds> mByKind;
};

}  // namespace merovanta
