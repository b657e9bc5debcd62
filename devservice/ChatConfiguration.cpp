#include "ChatConfiguration.h"

#include <nlohmann/json.hpp>

namespace merovanta::devservice {

using nlohmann::json;

json chatConfiguration(std::string_view id) {
    if (id == "empty") return json::object();
    if (id == "blank") return {{"params", json::object()}};
    const bool support = id == "support";
    return {{"params",
             {{"color", support ? "#0b6e5f" : "#2456d6"},
              {"hint", support ? "Ask us anything…" : "Your message"},
              {"title", support ? "Support & advice" : "Chat"},
              {"message", support ? "Hello! Tell us what you would like to know, and somebody from the team "
                                    "will be with you in a moment."
                                  : "Hello! How can we help?"}}}};
}

}  // namespace merovanta::devservice
