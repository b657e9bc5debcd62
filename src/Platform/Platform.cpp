#include "Platform/Platform.h"

#include <utility>

#include "General/Fatal.h"

namespace merovanta::platform {

namespace {

std::shared_ptr<Platform>& installed() {
    // Never destroyed: components that outlive main() still hold on to the ports.
    static auto* const platform = new std::shared_ptr<Platform>();
    return *platform;
}

}  // namespace

void install(std::shared_ptr<Platform> platform) {
    installed() = std::move(platform);
}

bool isInstalled() {
    return installed() != nullptr;
}

Platform& current() {
    if (!isInstalled()) fatalError("No platform is installed");
    return *installed();
}

}  // namespace merovanta::platform
