#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "Moment.h"

namespace merovanta::devservice {

/// Which agent acts for a visitor, one at a time. Whoever acts first holds the control; another asks for it,
/// and has it when the holder gives it or does not answer. It is free again when its holder has stopped
/// watching.
class Controls {
 public:
    static constexpr std::chrono::seconds kAnswerTime{20};
    /// A page that is loaded anew is back within this.
    static constexpr std::chrono::seconds kAwayTime{10};

    /// `changed` is called after each change.
    explicit Controls(std::function<void()> changed) : changed_(std::move(changed)) {}

    /// The agent acts, and holds the control if nobody does; false when another holds it.
    bool claim(std::uint32_t visitor, const std::string& agent, Moment now);
    /// Who holds it, empty when nobody does.
    std::string holder(std::uint32_t visitor) const;

    /// The agent wants the control; it has it at once when nobody holds it.
    void ask(std::uint32_t visitor, const std::string& agent, Moment now);
    /// The holder's answer to whoever asks; of anybody else it changes nothing.
    void answer(std::uint32_t visitor, const std::string& agent, bool gives, Moment now);

    /// To be called about once a second; `watches` says whether an agent looks at a visitor.
    void expire(Moment now, const std::function<bool(const std::string&, std::uint32_t)>& watches);
    /// The visitor is forgotten.
    void forget(std::uint32_t visitor);

    /// By the visitor's number: "holder", "asker" and "askedAt", the last two null when nobody asks.
    nlohmann::json toJson() const;

 private:
    struct Control {
        std::string holder;
        Moment watchedAt{};
        std::string asker;
        Moment askedAt{};
    };

    static void hand(Control& control, Moment now);

    std::function<void()> changed_;
    std::map<std::uint32_t, Control> controls_;
};

}  // namespace merovanta::devservice
