#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/WebChat/ChatViewController.h"
#include "General/WebChat/WebChatConfigurationDTO.h"
#include "Platform/Alert.h"
#include "Platform/CoverView.h"
#include "Platform/TapRecognizer.h"
#include "Platform/WebView.h"

namespace merovanta {

/// The chat page over the screen of the host application. A tap in the top fifth of that screen closes it.
/// Thread: main.
class ChatView : public std::enable_shared_from_this<ChatView> {
 public:
    static constexpr const char* className = "ChatView";

    /// Once it has been closed, or gone with the screen below it, removed is called.
    ChatView(std::shared_ptr<View> parent, WebChatConfigurationDTO config,
             std::optional<std::string> tenantId, std::optional<std::string> visitorId,
             std::function<void()> removed);

    /// Whether it is there to be seen, as a direct subview of this view.
    [[nodiscard]] bool isSubviewOf(const View& view) const;

    /// Whether it has been closed, or gone with the screen below it.
    [[nodiscard]] bool isGone() const;

    /// Lays a new web view over the parent, in the place of an earlier one, and loads the chat page in it.
    /// Says in the log what it lacks for that.
    void show();

    /// What is on its way is for somebody who is no longer the visitor: it is not shown. The page stays.
    void visitorChanged();

    /// Loads the page anew, for this visitor; for the same as before if absent.
    void reload(const std::optional<std::string>& visitorId);

    void removeFromSuperview();

 private:
    [[nodiscard]] std::unique_ptr<WebView> makeWebView();
    [[nodiscard]] std::optional<std::string> address() const;
    [[nodiscard]] bool closeOnTap();
    void viewTap(const TapRecognizer& recognizer);
    WebView::Policy decidePolicyForNavigationAction(const std::string& url);
    void download(const std::string& url);
    void didReceiveNavigationResponse(int statusCode);
    void showErrorAlert();

    std::shared_ptr<View> parent;
    WebChatConfigurationDTO config;
    std::optional<std::string> tenantId;
    std::optional<std::string> visitorId;
    const std::function<void()> mRemoved;
    std::shared_ptr<ChatViewController> controller;
    // Before the web view, which is in it.
    std::unique_ptr<CoverView> mCover;
    std::unique_ptr<WebView> webView;
    std::unique_ptr<TapRecognizer> mTapRecognizer;
    std::unique_ptr<Alert> mAlert;
    std::optional<std::chrono::milliseconds> mLastDownload;
};

}  // namespace merovanta
