// The service's answer to the initialisation.
#include <cstdint>

#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/MonitoringConfigDTO.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto json = merovanta::parseJson({reinterpret_cast<const char*>(data), size});
    if (json) (void)merovanta::MonitoringConfigDTO::decode(*json).ok();
    return 0;
}
