// Host and page names in addresses: what is accepted must be accepted again, unchanged.
#include <cstdint>

#include "General/Panoptra/Util/Url.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto url = merovanta::parseUrl({reinterpret_cast<const char*>(data), size});
    if (url && merovanta::parseUrl(*url) != url) __builtin_trap();
    return 0;
}
