#include "General/Panoptra/Util/ViewUtils.h"

#include <utility>

#include "Platform/Platform.h"

namespace merovanta {

namespace {

std::optional<std::string> currentFrontScreenName() {
    auto controller = ViewUtils::topViewController();
    if (!controller) return std::nullopt;
    if (const auto entries = controller->viewControllers(); entries && !entries->empty()) {
        controller = entries->front();
    }
    if (auto selected = controller->selectedViewController()) controller = std::move(selected);
    return controller->className();
}

void collectSubviews(const View& view, std::string_view className,
                     std::vector<std::shared_ptr<View>>& found) {
    for (auto& subview : view.subviews()) {
        const View& child = *subview;
        if (child.isKindOf(className)) found.push_back(std::move(subview));
        collectSubviews(child, className, found);
    }
}

}  // namespace

void ViewUtils::runOnMainQueue(std::function<void()> task) {
    platform::current().mainQueue().async(std::move(task));
}

void ViewUtils::runOnMainThread(std::function<void()> task) {
    if (platform::current().mainQueue().isCurrent()) {
        task();
    } else {
        runOnMainQueue(std::move(task));
    }
}

std::shared_ptr<ViewController> ViewUtils::topViewController() {
    auto controller = platform::current().application().keyWindowRootViewController();
    if (!controller) return nullptr;
    while (auto presented = controller->presentedViewController()) {
        controller = std::move(presented);
    }
    return controller;
}

std::shared_ptr<View> ViewUtils::rootView() {
    const auto controller = topViewController();
    auto view = controller ? controller->view() : nullptr;
    return view && view->isAlive() ? view : nullptr;
}

void ViewUtils::frontScreenName(std::function<void(const std::optional<std::string>&)> callback) {
    runOnMainQueue([callback = std::move(callback)] { callback(currentFrontScreenName()); });
}

std::vector<std::shared_ptr<View>> ViewUtils::subviewsOfClass(const View& view, std::string_view className) {
    std::vector<std::shared_ptr<View>> found;
    collectSubviews(view, className, found);
    return found;
}

std::shared_ptr<View> ViewUtils::viewWithTag(const std::shared_ptr<View>& view, long tag) {
    if (view->tag() == tag) return view;
    for (const auto& subview : view->subviews()) {
        if (auto found = viewWithTag(subview, tag)) return found;
    }
    return nullptr;
}

}  // namespace merovanta
