#pragma once

#include <memory>
#include <utility>

#include "InMemory/NativeView.h"
#include "Platform/View.h"

namespace merovanta::inmemory {

class ViewInMemory : public View {
 public:
    explicit ViewInMemory(const std::shared_ptr<NativeView>& view) : mView(view) {}

    [[nodiscard]] bool isAlive() const override { return !mView.expired(); }
    [[nodiscard]] const void* identity() const override { return mView.lock().get(); }
    [[nodiscard]] std::string className() const override;
    [[nodiscard]] bool isKindOf(std::string_view name) const override;
    [[nodiscard]] long tag() const override;
    [[nodiscard]] Rect frame() const override;
    [[nodiscard]] Rect bounds() const override;
    [[nodiscard]] std::vector<std::shared_ptr<View>> subviews() const override;
    [[nodiscard]] bool keepsTapPrivate(const Point& point) const override;
    [[nodiscard]] Rect convert(const Rect& rect, const View& target) const override;

    /// Null when dead.
    [[nodiscard]] std::shared_ptr<NativeView> native() const { return mView.lock(); }

 private:
    std::weak_ptr<NativeView> mView;
};

}  // namespace merovanta::inmemory
