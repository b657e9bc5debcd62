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
                {"ui.mobile.error", "Keine Verbindung"},
                {"ui.mobile.document.title", "Das Dokument wird nicht angezeigt"},
                {"ui.mobile.document.large", "Es ist zu groß."},
                {"ui.mobile.document.much",
                 "Dieser Chat hat zu viele Dokumente geschickt. Öffnen Sie ihn neu, um weitere zu sehen."},
                {"ui.mobile.document.many",
                 "Es kamen zu viele auf einmal. Öffnen Sie es bitte gleich noch einmal."},
                {"ui.mobile.dismiss", "Schließen"}};
    }
    return {
        {"ui.mobile.confirm.title", "Share your screen?"},
        {"ui.mobile.confirm.message",
         "Our support agent would like to look at this app together with you. Private fields stay hidden."},
        {"ui.confirm.accept", "Accept"},
        {"ui.confirm.decline", "Decline"},
        {"ui.mobile.connecting", "Connecting…"},
        {"ui.mobile.error", "No connection"},
        {"ui.mobile.document.title", "The document is not shown"},
        {"ui.mobile.document.large", "It is too large."},
        {"ui.mobile.document.much", "This chat has sent too many documents. Open it anew to see more."},
        {"ui.mobile.document.many", "Too many came at once. Please open it again in a moment."},
        {"ui.mobile.dismiss", "Dismiss"}};
}

}  // namespace merovanta::devservice
