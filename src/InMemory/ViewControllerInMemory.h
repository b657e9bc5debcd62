#pragma once

#include <memory>
#include <utility>

#include "InMemory/NativeController.h"
#include "Platform/ViewController.h"

namespace merovanta::inmemory {

class ViewControllerInMemory : public ViewController {
 public:
    explicit ViewControllerInMemory(std::shared_ptr<NativeController> controller)
        : mController(std::move(controller)) {}

    /// Null for none.
    [[nodiscard]] static std::shared_ptr<ViewController> handle(std::shared_ptr<NativeController> controller);

    [[nodiscard]] std::string className() const override { return mController->className; }
    [[nodiscard]] std::shared_ptr<View> view() const override;
    [[nodiscard]] std::shared_ptr<ViewController> presentedViewController() const override;
    [[nodiscard]] std::optional<std::vector<std::shared_ptr<ViewController>>> viewControllers()
        const override;
    [[nodiscard]] std::shared_ptr<ViewController> selectedViewController() const override;

 private:
    std::shared_ptr<NativeController> mController;
};

}  // namespace merovanta::inmemory
