#include "General/User/ActiveUserDTO.h"

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

nlohmann::ordered_json ActiveUserDTO::toJson() const {
    auto json = nlohmann::ordered_json::object();
    addOptional(json, "id", user.id);
    addOptional(json, "firstname", user.firstname);
    addOptional(json, "lastname", user.lastname);
    addOptional(json, "email", user.email);
    addOptional(json, "tags", user.tags);
    addOptional(json, "assignedUser", user.assignedUser);
    return json;
}

}  // namespace merovanta
