#include "InMemory/ViewControllerInMemory.h"

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

std::shared_ptr<ViewController> ViewControllerInMemory::handle(std::shared_ptr<NativeController> controller) {
    return controller ? std::make_shared<ViewControllerInMemory>(std::move(controller)) : nullptr;
}

std::shared_ptr<View> ViewControllerInMemory::view() const {
    return mController->view ? std::make_shared<ViewInMemory>(mController->view) : nullptr;
}

std::shared_ptr<ViewController> ViewControllerInMemory::presentedViewController() const {
    return handle(mController->presented);
}

std::optional<std::vector<std::shared_ptr<ViewController>>> ViewControllerInMemory::viewControllers() const {
    const auto& entries = mController->entries;
    if (!entries) return std::nullopt;
    std::vector<std::shared_ptr<ViewController>> handles;
    for (const auto& entry : *entries)
        handles.push_back(handle(entry));
    return handles;
}

std::shared_ptr<ViewController> ViewControllerInMemory::selectedViewController() const {
    return handle(mController->selected);
}

}  // namespace merovanta::inmemory
