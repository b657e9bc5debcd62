#pragma once

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "InMemory/NativeView.h"

namespace merovanta::inmemory {

/// A view that is in front of the others of its superview, or behind the first of these classes, for as
/// long as this and the superview live.
class SubviewInMemory {
 public:
    SubviewInMemory(const std::shared_ptr<NativeView>& superview, std::shared_ptr<NativeView> view)
        : mView(superview->add(std::move(view))) {}

    SubviewInMemory(const std::shared_ptr<NativeView>& superview, std::shared_ptr<NativeView> view,
                    std::initializer_list<std::string_view> classes)
        : SubviewInMemory(superview, std::move(view)) {
        auto& views = superview->subviews;
        const auto own = std::prev(views.end());
        const auto front = std::find_if(views.begin(), own, [&](const auto& each) {
            return std::find(classes.begin(), classes.end(), each->classNames.front()) != classes.end();
        });
        std::rotate(front, own, views.end());
    }

    ~SubviewInMemory() {
        const auto view = mView.lock();
        const auto superview = view ? view->superview.lock() : nullptr;
        if (superview) std::erase(superview->subviews, view);
    }

    SubviewInMemory(const SubviewInMemory&) = delete;
    SubviewInMemory& operator=(const SubviewInMemory&) = delete;

    /// Null when it has gone with its superview.
    [[nodiscard]] std::shared_ptr<NativeView> native() const { return mView.lock(); }

 private:
    std::weak_ptr<NativeView> mView;
};

}  // namespace merovanta::inmemory
