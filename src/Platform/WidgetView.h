#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/View.h"

namespace merovanta {

/// The native side of the co-browsing widget: a floating group of controls at the edge of the host
/// application. Where no control is, touches pass through. Destroying it takes it away; it may be destroyed
/// inside its own action. Thread: main.
class WidgetView {
 public:
    enum class Element { showButton, hideButton, buttonGroup, chatButton };

    /// What the visitor asked for; each comes later, never inside a call to this object.
    struct Actions {
        /// The show or the hide button.
        std::function<void()> hideClicked;
        std::function<void()> closeClicked;
        std::function<void()> openChat;
    };

    virtual ~WidgetView() = default;

    /// The native view, of class "DefaultUIView"; dead once the host has destroyed it.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;

    /// The status, or the share code. Plain text, of any length.
    virtual void setText(const std::string& text) = 0;

    virtual void setHidden(Element element, bool isHidden) = 0;
};

/// Thread: main.
class WidgetViewFactory {
 public:
    virtual ~WidgetViewFactory() = default;

    /// Loads the widget and puts it in front of all else in the view, and keeps it there whatever comes
    /// later, but for the library's own questions; null if it cannot be loaded or the view is dead.
    [[nodiscard]] virtual std::unique_ptr<WidgetView> create(const View& parent,
                                                             WidgetView::Actions actions) = 0;
};

}  // namespace merovanta
