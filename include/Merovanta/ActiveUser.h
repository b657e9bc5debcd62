#pragma once

#include <optional>
#include <string>
#include <vector>

namespace merovanta {

/// Who the visitor is, as the host application knows it. A plain value; every field may be left out.
struct ActiveUser {
    /// The host application's own identifier of the visitor; becomes the visitor id at the service.
    std::optional<std::string> id;
    std::optional<std::string> firstname;  ///< As the agent is to read it.
    std::optional<std::string> lastname;   ///< As the agent is to read it.
    std::optional<std::string> email;      ///< Not checked.
    /// Free labels.
    std::optional<std::vector<std::string>> tags;
    /// The agent assigned to this visitor.
    std::optional<std::string> assignedUser;
};

}  // namespace merovanta
