#pragma once

#include <memory>
#include <utility>

#include "InMemory/NativeView.h"

namespace merovanta::inmemory {

/// A view that is in front of the others of its superview for as long as this lives.
class SubviewInMemory {
 public:
    SubviewInMemory(const std::shared_ptr<NativeView>& superview, std::shared_ptr<NativeView> view)
        : mView(superview->add(std::move(view))) {}

    ~SubviewInMemory() {
        if (const auto superview = mView->superview.lock()) std::erase(superview->subviews, mView);
    }

    SubviewInMemory(const SubviewInMemory&) = delete;
    SubviewInMemory& operator=(const SubviewInMemory&) = delete;

    [[nodiscard]] const std::shared_ptr<NativeView>& native() const { return mView; }

 private:
    std::shared_ptr<NativeView> mView;
};

}  // namespace merovanta::inmemory
