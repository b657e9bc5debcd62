#pragma once

#include <functional>

namespace merovanta {

/// One serial queue beside the main thread, for work on pictures and documents.
class WorkQueue {
 public:
    virtual ~WorkQueue() = default;

    /// Runs the task later, in the order of the calls. A task must own all it touches: it may run, or be
    /// dropped unrun, while the application ends. Any thread.
    virtual void async(std::function<void()> task) = 0;
};

}  // namespace merovanta
