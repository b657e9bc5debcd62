#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/View.h"

namespace merovanta {

/// A screen of the host application: what fills a window, is presented over it, or is one page of it.
///
/// Handles are made on demand and are good for the current turn of the main queue. Thread: main.
class ViewController {
 public:
    virtual ~ViewController() = default;

    [[nodiscard]] virtual std::string className() const = 0;

    /// The view that shows this screen; null when it is gone.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;

    /// The screen presented over this one; null if none.
    [[nodiscard]] virtual std::shared_ptr<ViewController> presentedViewController() const = 0;

    /// The entries of a navigation controller, bottom-most first; absent if this is none.
    [[nodiscard]] virtual std::optional<std::vector<std::shared_ptr<ViewController>>> viewControllers()
        const = 0;

    /// The selected page of a tab bar controller; null if this is none or nothing is selected.
    [[nodiscard]] virtual std::shared_ptr<ViewController> selectedViewController() const = 0;
};

}  // namespace merovanta
