#include "General/Panoptra/IOSConfig.h"

#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

Result<IOSConfig> IOSConfig::decode(const nlohmann::json& json) {
    IOSConfig config;
    JsonFields fields(json);
    fields.required("blacklist", config.blacklist);
    fields.required("blacklistClasses", config.blacklistClasses);
    if (const auto& error = fields.error()) return *error;
    return config;
}

}  // namespace merovanta
