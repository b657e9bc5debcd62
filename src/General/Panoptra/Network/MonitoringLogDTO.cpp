#include "General/Panoptra/Network/MonitoringLogDTO.h"

#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

nlohmann::ordered_json MonitoringLogDTO::toJson() const {
    nlohmann::ordered_json json{{"c", rawValue(category)}, {"t", rawValue(type)}};
    addOptional(json, "v", value);
    addOptional(json, "cc", customCategory);
    json["m"] = meta.toJson();
    return json;
}

Result<MonitoringLogDTO> MonitoringLogDTO::decode(const nlohmann::json& json) {
    MonitoringLogDTO record;
    JsonFields fields(json);
    fields.required("c", record.category);
    fields.required("t", record.type);
    fields.optional("v", record.value);
    fields.optional("cc", record.customCategory);
    fields.nested("m", record.meta);
    if (const auto& error = fields.error()) return *error;
    return record;
}

}  // namespace merovanta
