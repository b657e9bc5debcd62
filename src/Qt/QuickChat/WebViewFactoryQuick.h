#pragma once

#include "Platform/WebView.h"

namespace merovanta::quick {

class WebViewFactoryQuick final : public WebViewFactory {
 public:
    [[nodiscard]] std::unique_ptr<WebView> create(const View& superview,
                                                  const std::vector<std::string>& handlers,
                                                  WebView::Delegate delegate) override;
};

}  // namespace merovanta::quick
