#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace merovanta::devservice {

/// The record by which a visitor initialises a session. Read leniently: a key that is missing or has another
/// type keeps its default and is named in `problems`.
struct InitRecord {
    std::string shareId, redirectId, url, visitorId, sessionId, visitId, tenantId;
    std::int64_t start = 0;
    bool initialize = false, optIn = false;
    int width = 0, height = 0;
    std::vector<std::string> problems;

    static InitRecord parse(const nlohmann::json& object);
};

}  // namespace merovanta::devservice
