#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "Visitor.h"

namespace merovanta::devservice {

/// All visitors the service remembers, a bounded number of them.
class VisitorRegistry {
 public:
    VisitorRegistry(VisitorObserver& observer, std::size_t capacity = 64);

    /// The visitor of a session, made if there is none. When full, the longest silent one is forgotten: ended
    /// sessions first, then those that never streamed.
    Visitor& obtain(const std::string& tenantId, const std::string& sessionId, Moment now);

    /// The visitor of a session, or null.
    Visitor* find(const std::string& tenantId, const std::string& sessionId);

    /// The visitor with this number in decimal, or null.
    Visitor* find(std::string_view number);

    /// The visitor of a session, or, when there is none, the latest, of those that have not ended if there
    /// are any; null when there is nobody.
    const Visitor* findToShow(std::string_view sessionId) const;

    /// A session begins: the visitor's former ones that were left for the background are over.
    void hasBegun(const Visitor& visitor);

    /// Ends the sessions of apps that have been silent for too long; to be called about once a second.
    void expire(Moment now);

    /// Summaries, oldest visitor first.
    nlohmann::json summaries(Moment now) const;

 private:
    using Visitors = std::map<std::uint32_t, std::unique_ptr<Visitor>>;

    void forgetOne();

    VisitorObserver& observer_;
    std::size_t capacity_;
    std::uint32_t lastNumber_ = 0;
    Visitors visitors_;
    std::map<std::pair<std::string, std::string>, std::uint32_t> numbers_;
};

}  // namespace merovanta::devservice
