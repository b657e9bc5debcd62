#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace merovanta::devservice {

struct Response {
    unsigned status = 200;
    std::string contentType;
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;

    static Response json(const nlohmann::json& value, unsigned status = 200);
    /// A JSON object whose "error" says what is wrong.
    static Response error(unsigned status, std::string_view message);
};

}  // namespace merovanta::devservice
