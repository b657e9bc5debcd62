#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Geometry.h"
#include "Platform/MaskJudge.h"

namespace merovanta::inmemory {

/// A view of the in-memory toolkit: a coloured rectangle with views in it. Change it freely, then let the
/// window paint (ApplicationInMemory::paint()).
struct NativeView : std::enable_shared_from_this<NativeView> {
    /// The class, then the classes that it derives from.
    std::vector<std::string> classNames{"View"};
    long tag = 0;
    /// The host's marks: whether the view is private, and whether taps in it are.
    std::optional<bool> masked;
    bool keepsTapsPrivate = false;
    ViewContent content = ViewContent::plain;
    /// Whether its subviews show only where they are in it.
    bool clips = false;
    Rect frame;
    /// 0xffRRGGBB.
    std::uint32_t color = 0xFFFFFFFF;
    std::vector<std::shared_ptr<NativeView>> subviews;
    std::weak_ptr<NativeView> superview;
    /// A view without one lets touches through.
    std::function<void()> onTap;

    [[nodiscard]] static std::shared_ptr<NativeView> make(const Rect& frame, std::uint32_t color,
                                                          std::vector<std::string> classNames = {"View"}) {
        auto view = std::make_shared<NativeView>();
        view->frame = frame;
        view->color = color;
        view->classNames = std::move(classNames);
        return view;
    }

    /// Puts the view in front of those that are there already.
    std::shared_ptr<NativeView> add(std::shared_ptr<NativeView> view) {
        view->superview = weak_from_this();
        subviews.push_back(view);
        return view;
    }
};

}  // namespace merovanta::inmemory
