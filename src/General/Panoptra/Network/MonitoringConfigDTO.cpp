#include "General/Panoptra/Network/MonitoringConfigDTO.h"

#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

Result<MonitoringConfigDTO> MonitoringConfigDTO::decode(const nlohmann::json& json) {
    MonitoringConfigDTO reply;
    JsonFields fields(json);
    fields.required("s", reply.shouldStartMonitoring);
    fields.optional("st", reply.startMonitoringType);
    fields.required("h", reply.htmlExists);
    fields.required("ip", reply.ip);
    fields.nested("ios", reply.ios);
    fields.optional("fsTy", reply.storageType);
    fields.required("x", reply.ignoreIp);
    fields.optional("pnWS", reply.disableWebSocket);
    fields.optional("cA", reply.chatActivated);
    if (const auto& error = fields.error()) return *error;
    return reply;
}

}  // namespace merovanta
