#include "General/Panoptra/Network/Message/Outbox.h"

#include <iterator>
#include <utility>

#include "General/MainThread.h"

namespace merovanta {

Outbox::Kind Outbox::kindOf(const ProtoMessage& message) {
    if (message.screenshotevent_size() > 0) return picture;
    if (message.clickevent_size() > 0) return tap;
    const bool isPing = !message.has_pagechange() && !message.has_tag() && message.usertag_size() == 0;
    return isPing ? ping : other;
}

void Outbox::put(Entry entry) {
    assertMainThread();
    const Kind kind = kindOf(entry.message);
    const auto gone = makeRoom(kind);
    mEntries.push_back(std::move(entry));
    mByKind.at(kind).push_back(std::prev(mEntries.end()));
    // At last: the callback may do anything.
    if (!gone) return;
    gone->callback(kind == picture ? std::nullopt : std::optional(StringError("Too many messages wait")));
}

std::optional<Outbox::Entry> Outbox::makeRoom(Kind kind) {
    const auto& pictures = mByKind.at(picture);
    if (kind == picture) return pictures.empty() ? std::nullopt : std::optional(takeOldest(picture));
    if (mEntries.size() - pictures.size() < maximumEvents) return std::nullopt;
    for (const Kind first : {ping, tap, other}) {
        if (!mByKind.at(first).empty()) return takeOldest(first);
    }
    return std::nullopt;
}

Outbox::Entry Outbox::takeOldest(Kind kind) {
    auto& sameKind = mByKind.at(kind);
    const auto oldest = sameKind.front();
    sameKind.pop_front();
    Entry entry = std::move(*oldest);
    mEntries.erase(oldest);
    return entry;
}

std::list<Outbox::Entry> Outbox::take() {
    assertMainThread();
    for (auto& sameKind : mByKind)
        sameKind.clear();
    return std::exchange(mEntries, {});
}

void Outbox::discard(const StringError& error) {
    for (const auto& entry : take()) {
        const Kind kind = kindOf(entry.message);
        const bool isMissed = kind != picture && kind != ping;
        entry.callback(isMissed ? std::optional(error) : std::nullopt);
    }
}

}  // namespace merovanta
