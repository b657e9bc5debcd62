#include "General/Panoptra/DependencyContainer.h"

namespace merovanta {

void DependencyContainer::registerType(std::type_index type, Factory factory) {
    const std::lock_guard lock(mMutex);
    mRegistrations[type] = Registration{.factory = std::move(factory)};
}

std::shared_ptr<void> DependencyContainer::resolveType(std::type_index type) {
    const std::lock_guard lock(mMutex);
    const auto found = mRegistrations.find(type);
    if (found == mRegistrations.end()) return nullptr;
    Registration& registration = found->second;
    if (registration.instance || registration.isBeingMade) return registration.instance;
    registration.isBeingMade = true;
    registration.instance = registration.factory(*this);
    registration.isBeingMade = false;
    return registration.instance;
}

}  // namespace merovanta
