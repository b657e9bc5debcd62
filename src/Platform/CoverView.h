#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/View.h"

namespace merovanta {

/// An empty, transparent view of the library's own that covers one of the host's: it fills it, follows its
/// size, is in front of all else in it but the agent's drawings and the co-browsing widget, and lets no touch
/// through. Destroying it takes it away, with the views in it. Thread: main.
class CoverView {
 public:
    virtual ~CoverView() = default;

    /// The native view; dead once the host has destroyed it.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;
};

/// Thread: main.
class CoverViewFactory {
 public:
    virtual ~CoverViewFactory() = default;

    /// A cover whose native view is of this class and a direct subview of the parent; null if the parent is
    /// dead. Whenever the visitor asks by the keyboard to have it go away, and when the host has destroyed
    /// its native view, dismissed is called, later; it may destroy the cover.
    [[nodiscard]] virtual std::unique_ptr<CoverView> create(const View& parent, const std::string& className,
                                                            std::function<void()> dismissed) = 0;
};

}  // namespace merovanta
