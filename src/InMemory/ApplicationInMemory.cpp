#include "InMemory/ApplicationInMemory.h"

#include <algorithm>

#include "InMemory/ViewControllerInMemory.h"

namespace merovanta::inmemory {

namespace {

bool isInTree(const NativeView& view, std::string_view name) {
    const auto& names = view.classNames;
    return std::find(names.begin(), names.end(), name) != names.end() ||
           std::any_of(view.subviews.begin(), view.subviews.end(),
                       [&](const auto& subview) { return isInTree(*subview, name); });
}

}  // namespace

std::shared_ptr<ViewController> ApplicationInMemory::keyWindowRootViewController() {
    return ViewControllerInMemory::handle(root);
}

bool ApplicationInMemory::classExists(std::string_view name) {
    if (root && root->view && isInTree(*root->view, name)) return true;
    return std::find(classes.begin(), classes.end(), name) != classes.end();
}

}  // namespace merovanta::inmemory
