#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "Contact.h"

namespace merovanta::devservice {

/// The people the service has heard of, a bounded number of them. Those whose chat is open are kept longest,
/// then those who have chatted, then the last seen.
class ContactRegistry {
 public:
    static constexpr std::size_t kCapacity = 128;

    /// `changed` is told of each contact that came or changed, not of each time it is seen.
    explicit ContactRegistry(std::function<void(const Contact&)> changed) : changed_(std::move(changed)) {}

    /// The contact with this visitor id, made if there is none.
    Contact& obtain(const std::string& tenantId, const std::string& visitorId, Moment now);

    /// As `obtain`, for a request within a service session (empty when there is none). A session that was
    /// last seen with another visitor id tells that the same person goes on under this one.
    Contact& seen(const std::string& tenantId, const std::string& visitorId, const std::string& sessionId,
                  Moment now);

    /// The one with this number in decimal, or null.
    Contact* find(std::string_view number);
    const Contact* find(std::string_view number) const;
    /// The one with this visitor id, or null.
    const Contact* find(std::string_view tenantId, std::string_view visitorId) const;

    /// Each of these changes the contact and says so.
    void identify(Contact& contact, nlohmann::json identity, Moment now);
    void pageOpened(Contact& contact);
    void pageClosed(Contact& contact);
    void readUpTo(Contact& contact, std::uint64_t sequence);
    void seenUpTo(Contact& contact, std::uint64_t sequence);
    /// They count as typing for a few seconds.
    void visitorTypes(Contact& contact, Moment now);
    void agentTypes(Contact& contact, const std::string& name, Moment now);
    /// Adds the message unless it was sent before.
    void addMessage(Contact& contact, ChatMessage message);

    /// Oldest first.
    nlohmann::json toJson() const;

 private:
    void forgetOne();

    std::function<void(const Contact&)> changed_;
    std::uint32_t lastNumber_ = 0;
    std::list<Contact> contacts_;
};

}  // namespace merovanta::devservice
