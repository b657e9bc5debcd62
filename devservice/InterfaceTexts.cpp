#include "InterfaceTexts.h"

#include <nlohmann/json.hpp>

namespace merovanta::devservice {

nlohmann::json interfaceTexts(std::string_view language) {
    if (language.substr(0, language.find_first_of("-_")) == "de") {
        return {{"ui.mobile.confirm.title", "Bildschirm teilen?"},
                {"ui.mobile.confirm.message",
                 "Unser Service möchte diese App mit Ihnen gemeinsam ansehen. Vertrauliche Felder bleiben "
                 "verdeckt."},
                {"ui.confirm.accept", "Zustimmen"},
                {"ui.confirm.decline", "Ablehnen"},
                {"ui.mobile.connecting", "Verbindung wird aufgebaut …"},
                {"ui.mobile.error", "Keine Verbindung"}};
    }
    return {
        {"ui.mobile.confirm.title", "Share your screen?"},
        {"ui.mobile.confirm.message",
         "Our support agent would like to look at this app together with you. Private fields stay hidden."},
        {"ui.confirm.accept", "Accept"},
        {"ui.confirm.decline", "Decline"},
        {"ui.mobile.connecting", "Connecting…"},
        {"ui.mobile.error", "No connection"}};
}

}  // namespace merovanta::devservice
