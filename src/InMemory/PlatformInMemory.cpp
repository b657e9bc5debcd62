#include "InMemory/PlatformInMemory.h"

#include "General/Panoptra/Injection.h"

namespace merovanta::inmemory {

std::shared_ptr<PlatformInMemory> PlatformInMemory::installNew() {
    uninstall();
    auto platform = std::make_shared<PlatformInMemory>();
    platform::install(platform);
    return platform;
}

void PlatformInMemory::uninstall() {
    // The components first: they hold handles of the platform that is to go.
    Injection::discard();
    platform::install(nullptr);
}

}  // namespace merovanta::inmemory
