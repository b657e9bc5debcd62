#pragma once

#include <Merovanta/ActiveUser.h>

#include <nlohmann/json.hpp>

namespace merovanta {

/// The identified visitor as the service is told.
struct ActiveUserDTO {
    const ActiveUser& user;

    /// Absent values are left out.
    [[nodiscard]] nlohmann::ordered_json toJson() const;
};

}  // namespace merovanta
