#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/View.h"
#include "Platform/WidgetView.h"

namespace merovanta {

/// The co-browsing widget: shows a status or the share code, and lets the visitor hide it, end the session
/// and open the chat. Thread: main.
class DefaultUIView : public std::enable_shared_from_this<DefaultUIView> {
 public:
    /// Puts a widget into the view; null, with a warning in the log, if there is none to be had.
    [[nodiscard]] static std::shared_ptr<DefaultUIView> create(const View& parent);

    void setText(const std::string& text);

    /// Whether the chat button shows.
    void setChatActivated(bool isActivated);

    /// Whether it is there to be seen on this screen.
    [[nodiscard]] bool isOn(const View& screen) const;

    /// Shows it as it is on this screen; false, and it is gone, if that cannot be done.
    [[nodiscard]] bool moveTo(const View& screen);

    /// Takes the widget away.
    void removeFromSuperview();

    /// Whose chat the chat button opens.
    std::string tenantId;

 private:
    void show(const View& parent);
    void hideClicked();
    void closeClicked();
    void openChat();

    struct Part {
        WidgetView::Element element;
        bool isHidden;
    };

    std::unique_ptr<WidgetView> mNative;
    // As long as the native view lives, so does the screen that it is on.
    const void* mScreen = nullptr;
    std::string mText;
    bool mIsChatActivated = false;
    Part showButton{WidgetView::Element::showButton, true};
    Part hideButton{WidgetView::Element::hideButton, false};
    Part buttonGroup{WidgetView::Element::buttonGroup, false};
};

}  // namespace merovanta
