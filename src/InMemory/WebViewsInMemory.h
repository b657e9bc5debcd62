#pragma once

#include <memory>
#include <string>
#include <vector>

#include "InMemory/VirtualTime.h"
#include "Platform/WebView.h"

namespace merovanta::inmemory {

/// Web views without a browser: they know what they were told, and the test plays the page.
class WebViewsInMemory : public WebViewFactory {
 public:
    explicit WebViewsInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::unique_ptr<WebView> create(const View& superview,
                                                  const std::vector<std::string>& handlers,
                                                  WebView::Delegate delegate) override;

    /// A web view as its page sees it.
    struct Shown {
        std::vector<std::string> handlers;
        WebView::Delegate delegate;
        /// What was loaded and evaluated so far.
        std::vector<std::string> loaded;
        std::vector<std::string> evaluated;
    };

    /// The web view made last; null once it is gone.
    [[nodiscard]] std::shared_ptr<Shown> shown() const { return mShown.lock(); }

    /// How many were made.
    int made = 0;
    /// How the next evaluations end.
    std::optional<StringError> evaluationError;
    /// Makes create() fail.
    bool isBroken = false;

 private:
    std::shared_ptr<VirtualTime> mTime;
    std::weak_ptr<Shown> mShown;
};

}  // namespace merovanta::inmemory
