#include "General/WebChat/GrowthActionParams.h"

#include "General/Panoptra/Network/JsonFields.h"

namespace merovanta {

Result<GrowthActionParams> GrowthActionParams::decode(const nlohmann::json& json) {
    GrowthActionParams params;
    JsonFields fields(json);
    fields.optional("color", params.color);
    fields.optional("hint", params.hint);
    fields.optional("title", params.title);
    fields.optional("message", params.message);
    if (const auto& error = fields.error()) return *error;
    return params;
}

}  // namespace merovanta
