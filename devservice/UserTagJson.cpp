#include "UserTagJson.h"

#include <nlohmann/json.hpp>

#include "Text.h"

namespace merovanta::devservice {

nlohmann::json userTagJson(const com::merovanta::panoptra::UserTag& tag, std::size_t maxTextBytes,
                           int maxLabels) {
    nlohmann::json result = nlohmann::json::object();
    const auto put = [&](const char* key, bool present, const std::string& value) {
        if (present) result[key] = boundedText(value, maxTextBytes);
    };
    put("id", tag.has_id(), tag.id());
    put("email", tag.has_email(), tag.email());
    put("firstname", tag.has_firstname(), tag.firstname());
    put("lastname", tag.has_lastname(), tag.lastname());
    put("assignedUser", tag.has_assigneduser(), tag.assigneduser());
    put("mobileDeviceToken", tag.has_mobiledevicetoken(), tag.mobiledevicetoken());
    for (int i = 0; i < tag.label_size() && i < maxLabels; ++i) {
        result["label"].push_back(boundedText(tag.label(i), maxTextBytes));
    }
    return result;
}

}  // namespace merovanta::devservice
