#pragma once

#include <optional>
#include <string>

#include "General/Result.h"
#include "General/WebChat/GrowthActionParams.h"

namespace merovanta {

/// What the service says about one chat configuration.
struct WebChatConfigurationDTO {
    std::optional<GrowthActionParams> params;

    [[nodiscard]] static Result<WebChatConfigurationDTO> decode(const std::string& text);
};

}  // namespace merovanta
