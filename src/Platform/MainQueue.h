#pragma once

#include <functional>

namespace merovanta {

/// The serial queue of the main thread, which owns all of the library's state.
class MainQueue {
 public:
    virtual ~MainQueue() = default;

    /// Runs the task later on the main thread, after all tasks queued before it; never inside this call. A
    /// task queued when the application has ended is dropped. Any thread.
    virtual void async(std::function<void()> task) = 0;

    /// Whether the caller is on the main thread. Any thread.
    [[nodiscard]] virtual bool isCurrent() const = 0;
};

}  // namespace merovanta
