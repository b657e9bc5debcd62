#include "General/Panoptra/IOSConfig.h"

#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

Result<IOSConfig> IOSConfig::decode(const nlohmann::json& json) {
    IOSConfig config;
    JsonFields fields(json);
    fields.required("blacklist", config.blacklist);
    fields.required("blacklistClasses", config.blacklistClasses);
    if (fields.error()) return *fields.error();
    return config;
}

}  // namespace merovanta
