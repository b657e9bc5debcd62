#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <typeindex>
#include <unordered_map>
#include <utility>

namespace merovanta {

/// Creates each registered component once, when it is first asked for, its collaborators before it.
/// Any thread: the container's own lock serialises resolutions.
class DependencyContainer {
 public:
    /// Registers a component that is constructed from shared pointers to its collaborators, in this order. It
    /// cannot be resolved while one of them cannot.
    template <typename Component, typename... Collaborators>
    void registerSingleton() {
        registerFactory<Component>([](DependencyContainer& container) {
            return make<Component>(container.resolve<Collaborators>()...);
        });
    }

    /// Registers a component that the factory makes, or null while it cannot.
    template <typename Component>
    void registerFactory(std::function<std::shared_ptr<Component>(DependencyContainer&)> factory) {
        registerType(typeid(Component), std::move(factory));
    }

    /// The one instance; null if the type is not registered, cannot be made now, or needs itself to be made.
    template <typename Component>
    [[nodiscard]] std::shared_ptr<Component> resolve() {
        return std::static_pointer_cast<Component>(resolveType(typeid(Component)));
    }

 private:
    using Factory = std::function<std::shared_ptr<void>(DependencyContainer&)>;

    struct Registration {
        Factory factory;
        std::shared_ptr<void> instance;
        bool isBeingMade = false;
    };

    template <typename Component, typename... Pointers>
    static std::shared_ptr<Component> make(Pointers... collaborators) {
        if (!(... && collaborators)) return nullptr;
        return std::make_shared<Component>(std::move(collaborators)...);
    }

    void registerType(std::type_index type, Factory factory);
    std::shared_ptr<void> resolveType(std::type_index type);

    // Recursive, because a factory resolves its collaborators.
    std::recursive_mutex mMutex;
    std::unordered_map<std::type_index, Registration> mRegistrations;
};

}  // namespace merovanta
