#include "General/WebChat/ChatView.h"

#include <Merovanta/Merovanta.h>

#include <algorithm>
#include <utility>

#include "General/DebugPrint.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/WebChat/DownloadScript.h"
#include "General/WebChat/WebChat.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

// The rest of the page is for the chat's own controls.
constexpr double closingPart = 0.2;

// A visitor does not ask for more; a page might.
constexpr std::chrono::milliseconds downloadPause{250};
constexpr std::size_t maximumUrl = 8192;

std::string secondsSinceEpoch() {
    const auto now = platform::current().clock().sinceEpoch();
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

std::string encoded(const std::optional<std::string>& text) {
    return encodeQuery(text.value_or(""));
}

}  // namespace

ChatView::ChatView(std::shared_ptr<View> parentView, WebChatConfigurationDTO configuration,
                   std::optional<std::string> tenant, std::optional<std::string> visitor,
                   std::function<void()> removed)
    : parent(std::move(parentView)),
      config(std::move(configuration)),
      tenantId(std::move(tenant)),
      visitorId(std::move(visitor)),
      mRemoved(std::move(removed)) {}

bool ChatView::isSubviewOf(const View& view) const {
    if (isGone()) return false;
    const auto subviews = view.subviews();
    return std::any_of(
        subviews.begin(), subviews.end(),
        [own = mCover->view()->identity()](const auto& subview) { return subview->identity() == own; });
}

bool ChatView::isGone() const {
    const auto own = mCover ? mCover->view() : nullptr;
    return !own || !own->isAlive();
}

void ChatView::show() {
    assertMainThread();
    webView.reset();
    if (!controller)
        controller = std::make_shared<ChatViewController>(platform::current().documentPreviews()->create());
    if (!mCover) {
        mCover = platform::current().coverViews().create(*parent, className, [weak = weak_from_this()] {
            if (const auto self = weak.lock()) self->removeFromSuperview();
        });
    }
    webView = makeWebView();
    // Before there is a page, too: the visitor must always be able to close what lies over the screen.
    if (!webView || !closeOnTap()) {
        Log::warning("Cannot show the web view");
        removeFromSuperview();
        return;
    }
    if (!tenantId) return Log::warning("No tenantId set");
    if (!visitorId) return Log::warning("No visitorId set");
    const auto text = address();
    if (!text) return Log::warning("Cannot construct URL");
    const auto url = parseUrl(*text);
    if (!url) return Log::warning("Cannot parse URL");
    Log::debug("Load: " + *url);
    webView->load(*url);
}

void ChatView::visitorChanged() {
    // An open preview stays, and is closed with the chat.
    if (controller) controller = std::make_shared<ChatViewController>(controller->retire());
}

void ChatView::reload(const std::optional<std::string>& visitor) {
    if (visitor) visitorId = visitor;
    visitorChanged();
    show();
}

void ChatView::removeFromSuperview() {
    mAlert.reset();
    mTapRecognizer.reset();
    webView.reset();
    mCover.reset();
    controller.reset();
    mRemoved();
}

std::unique_ptr<WebView> ChatView::makeWebView() {
    const auto superview = mCover ? mCover->view() : nullptr;
    if (!superview) return nullptr;
    const auto weak = weak_from_this();
    WebView::Delegate delegate;
    delegate.didReceiveScriptMessage = [handler = controller](const ScriptMessage& message) {
        handler->didReceiveScriptMessage(message);
    };
    delegate.decidePolicyForNavigationAction = [weak](const std::string& url) {
        const auto self = weak.lock();
        return self ? self->decidePolicyForNavigationAction(url) : WebView::Policy::cancel;
    };
    delegate.didReceiveNavigationResponse = [weak](int statusCode) {
        if (const auto self = weak.lock()) self->didReceiveNavigationResponse(statusCode);
    };
    delegate.mayChooseFiles = [] {
        const auto webChat = Injection::resolve<WebChat>();
        return webChat && webChat->areAttachmentsAllowed;
    };
    delegate.didFailNavigation = [weak](const StringError& error) {
        Log::warning("Cannot load chat: " + error.errorDescription());
        if (const auto self = weak.lock()) self->showErrorAlert();
    };
    return platform::current().webViews()->create(
        *superview, {ChatViewController::openDocument, ChatViewController::jsError}, std::move(delegate));
}

std::optional<std::string> ChatView::address() const {
    if (!config.params) return std::nullopt;
    const MerovantaConfiguration& hosts = Merovanta::configuration();
    const GrowthActionParams& params = *config.params;
    return hosts.cdnPath() + "/chat/chat.html?" + secondsSinceEpoch() + "#d=" + hosts.server() +
           "&tId=" + tenantId.value_or("") + "&vId=" + visitorId.value_or("") +
           "&title=" + encoded(params.title) + "&message=" + encoded(params.message) +
           "&hint=" + encoded(params.hint) + "&color=" + encoded(params.color) + "&n=true&eU=true";
}

bool ChatView::closeOnTap() {
    mTapRecognizer = platform::current().tapRecognizers().create(
        [weak = weak_from_this()](const TapRecognizer& recognizer) {
            if (const auto self = weak.lock()) self->viewTap(recognizer);
        },
        TapRecognizerFactory::Taps::everyones);
    if (!mTapRecognizer) return false;
    mTapRecognizer->attach(*mCover->view());
    return true;
}

void ChatView::viewTap(const TapRecognizer& recognizer) {
    if (!mCover) return;
    const double y = recognizer.locationIn(*mCover->view()).y;
    if (y <= closingPart * parent->bounds().height) removeFromSuperview();
}

WebView::Policy ChatView::decidePolicyForNavigationAction(const std::string& url) {
    if (url.find("chat.html") != std::string::npos) return WebView::Policy::allow;
    download(url);
    return WebView::Policy::cancel;
}

void ChatView::download(const std::string& url) {
    const auto now = platform::current().clock().sinceEpoch();
    const bool isTooSoon = mLastDownload && now - *mLastDownload < downloadPause;
    if (!webView || isTooSoon || url.size() > maximumUrl) return;
    mLastDownload = now;
    webView->evaluateJavaScript(downloadScript(url), [](const std::optional<StringError>& error) {
        if (error) debugPrint("JS ERR: " + error->errorDescription());
    });
}

void ChatView::didReceiveNavigationResponse(int statusCode) {
    if (statusCode > 399) showErrorAlert();
}

void ChatView::showErrorAlert() {
    const auto over = ViewUtils::topViewController();
    if (!over || mAlert) return;
    mAlert = platform::current().alerts().present(
        *over, {.title = "Error", .message = "An error occurred", .accept = "Dismiss"},
        [weak = weak_from_this()](bool /*accepted*/) {
            if (const auto self = weak.lock()) self->mAlert.reset();
        });
}

}  // namespace merovanta
