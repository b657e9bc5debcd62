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

std::vector<bool> ApplicationInMemory::classesExist(const std::vector<std::string>& names) {
    std::vector<bool> exist;
    for (const std::string& name : names) {
        const bool isShown = root && root->view && isInTree(*root->view, name);
        exist.push_back(isShown || std::find(classes.begin(), classes.end(), name) != classes.end());
    }
    return exist;
}

}  // namespace merovanta::inmemory
