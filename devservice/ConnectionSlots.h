#pragma once

#include <cstddef>
#include <memory>

namespace merovanta::devservice {

/// Bounds the number of connections.
class ConnectionSlots {
 public:
    explicit ConnectionSlots(std::size_t capacity)
        : used_(std::make_shared<std::size_t>(0)), capacity_(capacity) {}

    /// A slot that is free again when the last copy goes, or null when all are taken.
    std::shared_ptr<void> acquire() {
        if (*used_ >= capacity_) return nullptr;
        ++*used_;
        return {used_.get(), [used = used_](void*) { --*used; }};
    }

 private:
    std::shared_ptr<std::size_t> used_;
    std::size_t capacity_;
};

}  // namespace merovanta::devservice
