#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/View.h"
#include "Platform/ViewController.h"

namespace merovanta {

/// Finds its way in the host application's screens. Thread: main, unless stated.
class ViewUtils {
 public:
    ViewUtils() = delete;

    /// Any thread.
    static void runOnMainQueue(std::function<void()> task);

    /// Runs the task at once if this is the main thread, else later on the main queue. Any thread.
    static void runOnMainThread(std::function<void()> task);

    /// The controller presented over all others; null without a window.
    [[nodiscard]] static std::shared_ptr<ViewController> topViewController();

    /// The top controller's view; null without one.
    [[nodiscard]] static std::shared_ptr<View> rootView();

    /// Delivers, later on the main queue, the class name of the screen in front: of a navigation stack its
    /// first entry, so that one name covers the whole stack; of tabs the selected one. Absent without a
    /// window. Any thread.
    static void frontScreenName(std::function<void(const std::optional<std::string>&)> callback);

    /// All views below this one that are of the class, depth first. Like View, also from a mask provider.
    [[nodiscard]] static std::vector<std::shared_ptr<View>> subviewsOfClass(const View& view,
                                                                            std::string_view className);

    /// The first view with this tag in the subtree, this view included, depth first; null if there is none.
    [[nodiscard]] static std::shared_ptr<View> viewWithTag(const std::shared_ptr<View>& view, long tag);
};

}  // namespace merovanta
