#include "General/User/ActiveUserDTO.h"

namespace merovanta {

nlohmann::ordered_json ActiveUserDTO::toJson() const {
    auto json = nlohmann::ordered_json::object();
    const auto add = [&json](const char* key, const auto& value) {
        if (value) json[key] = *value;
    };
    add("id", user.id);
    add("firstname", user.firstname);
    add("lastname", user.lastname);
    add("email", user.email);
    add("tags", user.tags);
    add("assignedUser", user.assignedUser);
    return json;
}

}  // namespace merovanta
