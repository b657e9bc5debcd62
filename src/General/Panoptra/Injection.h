#pragma once

#include <memory>

#include "General/Panoptra/DependencyContainer.h"

namespace merovanta {

/// Holds the process's one container. Any thread.
class Injection {
 public:
    Injection() = delete;

    /// The container; the first call builds it and registers every component.
    [[nodiscard]] static DependencyContainer& getContainer();

    template <typename Component>
    [[nodiscard]] static std::shared_ptr<Component> resolve() {
        return getContainer().resolve<Component>();
    }

    /// Drops the container with all components, so that the next call builds it anew. For a change of
    /// platform in tests; no other thread may be using the library.
    static void discard();
};

}  // namespace merovanta
