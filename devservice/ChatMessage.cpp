#include "ChatMessage.h"

#include <nlohmann/json.hpp>

namespace merovanta::devservice {

nlohmann::json ChatMessage::toJson() const {
    nlohmann::json json = {{"seq", sequence},
                           {"at", at.time_since_epoch().count()},
                           {"from", author == Author::Agent ? "agent" : "visitor"},
                           {"text", text}};
    if (!key.empty()) json["key"] = key;
    if (!agent.id.empty()) json["agent"] = agent.toJson();
    if (document) {
        json["document"] = {{"url", document->url},
                            {"name", document->name},
                            {"type", document->contentType},
                            {"bytes", document->bytes}};
    }
    return json;
}

}  // namespace merovanta::devservice
