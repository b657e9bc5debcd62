#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "InMemory/NativeView.h"

namespace merovanta::inmemory {

/// A screen of the in-memory toolkit.
struct NativeController {
    std::string className;
    std::shared_ptr<NativeView> view;
    std::shared_ptr<NativeController> presented;
    /// Present for a navigation controller.
    std::optional<std::vector<std::shared_ptr<NativeController>>> entries;
    /// Present for a tab bar controller.
    std::shared_ptr<NativeController> selected;

    [[nodiscard]] static std::shared_ptr<NativeController> make(std::string className,
                                                                std::shared_ptr<NativeView> view) {
        auto controller = std::make_shared<NativeController>();
        controller->className = std::move(className);
        controller->view = std::move(view);
        return controller;
    }
};

}  // namespace merovanta::inmemory
