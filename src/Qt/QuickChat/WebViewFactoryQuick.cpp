#include "Qt/QuickChat/WebViewFactoryQuick.h"

#include <QtQuick/QQuickItem>
#include <utility>

#include "Qt/Quick/ViewQuick.h"
#include "Qt/QuickChat/WebViewQuick.h"

namespace merovanta::quick {

std::unique_ptr<WebView> WebViewFactoryQuick::create(const View& superview,
                                                     const std::vector<std::string>& handlers,
                                                     WebView::Delegate delegate) {
    QQuickItem* const item = ViewQuick::itemInWindow(superview);
    if (item == nullptr) return nullptr;
    auto webView = std::make_unique<WebViewQuick>(handlers, std::move(delegate));
    if (!webView->open(*item)) return nullptr;
    return webView;
}

}  // namespace merovanta::quick
