#include "Contact.h"

#include "Text.h"

namespace merovanta::devservice {

using nlohmann::json;

namespace {

json lastLine(const ChatMessage* message) {
    constexpr std::size_t maxBytes = 120;
    if (message == nullptr) return {};
    json line = message->toJson();
    line["text"] = boundedText(message->document ? message->document->name : message->text, maxBytes);
    line.erase("key");
    line.erase("document");
    return line;
}

}  // namespace

json Contact::toJson() const {
    return {{"id", std::to_string(number)},
            {"tenantId", tenantId},
            {"visitorId", visitorId},
            {"sessionId", sessionId},
            {"identity", identity},
            {"identifiedAt", identifiedAt ? json(identifiedAt->time_since_epoch().count()) : json()},
            {"continuedAs", continuedAs == 0 ? json() : json(std::to_string(continuedAs))},
            {"chatOpen", chatPages > 0},
            {"unread", chat.unread()},
            {"seenUpTo", chat.visitorSawUpTo()},
            {"typingUntil", visitorTypesUntil.time_since_epoch().count()},
            {"lastMessage", lastLine(chat.last())},
            {"firstSeenAt", firstSeen.time_since_epoch().count()}};
}

}  // namespace merovanta::devservice
