#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/StringError.h"
#include "Platform/View.h"

namespace merovanta {

/// What a page, or a script that the library ran in it, says to the library.
struct ScriptMessage {
    enum class Sender { page, evaluatedScript };

    /// The name of the handler.
    std::string name;
    /// Absent if what was posted is no string.
    std::optional<std::string> body;
    /// A page cannot pass for a script of the library's own.
    Sender sender = Sender::page;
};

/// A browser for one page of the service, which shares nothing with the host's own: no cookies, no storage,
/// no access to local files but those that the visitor chooses, no other windows, no downloads to disk. While
/// the visitor chooses, no picture of the window is captured and no tap played back in it. Destroying it
/// takes it away; it may be destroyed inside its own callback. Thread: main.
class WebView {
 public:
    enum class Policy { allow, cancel };

    /// Each comes later, never inside a call to this object.
    struct Delegate {
        /// Only for messages to the handlers that the view was made with, sent by the page that load() named,
        /// or to which the server redirected that load within its origin, and not by a page within it.
        std::function<void(const ScriptMessage&)> didReceiveScriptMessage;
        /// Before anything but the page that load() names is opened, also where that one redirects to, in
        /// another window, as a whole or within the page. May be asked while the page waits: decides at once.
        std::function<Policy(const std::string& url)> decidePolicyForNavigationAction;
        /// The status with which a page, not what is within it, was answered over HTTP.
        std::function<void(int statusCode)> didReceiveNavigationResponse;
        /// Before the visitor is shown the files of this device to choose from, for the page to read; the
        /// page asked for it. Without it the answer is no.
        std::function<bool()> mayChooseFiles;
        /// The page could not be loaded, for another reason than its status or a cancelled navigation.
        std::function<void(const StringError& error)> didFailNavigation;
    };

    virtual ~WebView() = default;

    /// The native view; dead once the host has destroyed it.
    [[nodiscard]] virtual std::shared_ptr<View> view() const = 0;

    /// Opens the page and gives it `window.webkit.messageHandlers` with the handlers, whatever address it
    /// gives itself later.
    virtual void load(const std::string& url) = 0;

    /// Runs the script beside the page: with its address, its cookies and its document, and with handlers of
    /// the same names, but out of reach of its scripts. The completion is called later, with an error if the
    /// script could not be run or threw.
    virtual void evaluateJavaScript(const std::string& script,
                                    std::function<void(const std::optional<StringError>&)> completion) = 0;
};

/// Thread: main.
class WebViewFactory {
 public:
    virtual ~WebViewFactory() = default;

    /// A web view that fills its superview and follows its size. Null if the superview is dead or there is no
    /// browser to be had.
    [[nodiscard]] virtual std::unique_ptr<WebView> create(const View& superview,
                                                          const std::vector<std::string>& handlers,
                                                          WebView::Delegate delegate) = 0;
};

}  // namespace merovanta
