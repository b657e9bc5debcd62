#include "ContactRegistry.h"

#include <algorithm>
#include <tuple>

#include "Text.h"

namespace merovanta::devservice {
namespace {
constexpr std::chrono::seconds kTypingTime{6};
// Nobody is told more often that somebody types.
constexpr std::chrono::seconds kTypingPause{2};

bool extendTyping(Moment& until, Moment now) {
    if (until - now > kTypingTime - kTypingPause) return false;
    until = now + kTypingTime;
    return true;
}
}  // namespace

Contact& ContactRegistry::obtain(const std::string& tenantId, const std::string& visitorId, Moment now) {
    const std::string tenant = boundedText(tenantId, kMaxIdentifierBytes);
    const std::string visitor = boundedText(visitorId, kMaxIdentifierBytes);
    if (auto* const known = const_cast<Contact*>(std::as_const(*this).find(tenant, visitor))) {
        known->lastSeen = now;
        return *known;
    }
    if (contacts_.size() >= kCapacity) forgetOne();
    Contact& contact = contacts_.emplace_back();
    contact.number = ++lastNumber_;
    contact.tenantId = tenant;
    contact.visitorId = visitor;
    contact.firstSeen = contact.lastSeen = now;
    changed_(contact);
    return contact;
}

Contact& ContactRegistry::seen(const std::string& tenantId, const std::string& visitorId,
                               const std::string& sessionId, Moment now) {
    Contact& contact = obtain(tenantId, visitorId, now);
    const std::string session = boundedText(sessionId, kMaxIdentifierBytes);
    if (session.empty() || contact.sessionId == session) return contact;
    const auto previous = std::find_if(contacts_.begin(), contacts_.end(), [&](const Contact& other) {
        return other.tenantId == contact.tenantId && other.sessionId == session;
    });
    contact.sessionId = session;
    if (previous != contacts_.end()) {
        previous->sessionId.clear();
        previous->continuedAs = contact.number;
        contact.continuedAs = 0;
        changed_(*previous);
    }
    changed_(contact);
    return contact;
}

Contact* ContactRegistry::find(std::string_view number) {
    return const_cast<Contact*>(std::as_const(*this).find(number));
}

const Contact* ContactRegistry::find(std::string_view number) const {
    const auto found = std::find_if(contacts_.begin(), contacts_.end(), [&](const Contact& contact) {
        return std::to_string(contact.number) == number;
    });
    return found == contacts_.end() ? nullptr : &*found;
}

const Contact* ContactRegistry::find(std::string_view tenantId, std::string_view visitorId) const {
    const auto found = std::find_if(contacts_.begin(), contacts_.end(), [&](const Contact& contact) {
        return contact.tenantId == tenantId && contact.visitorId == visitorId;
    });
    return found == contacts_.end() ? nullptr : &*found;
}

void ContactRegistry::identify(Contact& contact, nlohmann::json identity, Moment now) {
    contact.identity = std::move(identity);
    contact.identifiedAt = now;
    changed_(contact);
}

void ContactRegistry::pageOpened(Contact& contact) {
    ++contact.chatPages;
    changed_(contact);
}

void ContactRegistry::pageClosed(Contact& contact) {
    --contact.chatPages;
    changed_(contact);
}

void ContactRegistry::readUpTo(Contact& contact, std::uint64_t sequence) {
    if (contact.chat.readUpTo(sequence)) changed_(contact);
}

void ContactRegistry::seenUpTo(Contact& contact, std::uint64_t sequence) {
    if (contact.chat.seenUpTo(sequence)) changed_(contact);
}

void ContactRegistry::visitorTypes(Contact& contact, Moment now) {
    if (extendTyping(contact.visitorTypesUntil, now)) changed_(contact);
}

void ContactRegistry::agentTypes(Contact& contact, const std::string& name, Moment now) {
    contact.typingAgent = name;
    if (extendTyping(contact.agentTypesUntil, now)) changed_(contact);
}

void ContactRegistry::addMessage(Contact& contact, ChatMessage message) {
    // Who has said it does not type any more.
    Moment& typing =
        message.author == ChatMessage::Author::Agent ? contact.agentTypesUntil : contact.visitorTypesUntil;
    typing = {};
    if (contact.chat.add(std::move(message))) changed_(contact);
}

nlohmann::json ContactRegistry::toJson() const {
    nlohmann::json result = nlohmann::json::array();
    for (const Contact& contact : contacts_)
        result.push_back(contact.toJson());
    return result;
}

void ContactRegistry::forgetOne() {
    const auto rank = [](const Contact& contact) {
        return std::tuple(contact.chatPages > 0, contact.chat.last() != nullptr, contact.lastSeen);
    };
    contacts_.erase(std::min_element(contacts_.begin(), contacts_.end(),
                                     [&](const Contact& a, const Contact& b) { return rank(a) < rank(b); }));
}

}  // namespace merovanta::devservice
