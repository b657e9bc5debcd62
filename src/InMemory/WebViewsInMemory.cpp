#include "InMemory/WebViewsInMemory.h"

#include <utility>

#include "InMemory/SubviewInMemory.h"
#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

class WebViewInMemory : public WebView {
 public:
    WebViewInMemory(const std::shared_ptr<NativeView>& superview,
                    std::shared_ptr<WebViewsInMemory::Shown> shown, const WebViewsInMemory& factory,
                    std::shared_ptr<VirtualTime> time)
        : mSubview(superview, NativeView::make({0, 0, superview->frame.width, superview->frame.height},
                                               0xFFFFFFFF, {"WebView"})),
          mShown(std::move(shown)),
          mFactory(factory),
          mTime(std::move(time)) {}

    [[nodiscard]] std::shared_ptr<View> view() const override {
        return std::make_shared<ViewInMemory>(mSubview.native());
    }
    void load(const std::string& url) override { mShown->loaded.push_back(url); }
    void evaluateJavaScript(const std::string& script,
                            std::function<void(const std::optional<StringError>&)> completion) override {
        mShown->evaluated.push_back(script);
        mTime->post([completion = std::move(completion), error = mFactory.evaluationError,
                     shown = std::weak_ptr(mShown)] {
            if (!shown.expired()) completion(error);
        });
    }

 private:
    SubviewInMemory mSubview;
    std::shared_ptr<WebViewsInMemory::Shown> mShown;
    const WebViewsInMemory& mFactory;
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace

std::unique_ptr<WebView> WebViewsInMemory::create(const View& superview,
                                                  const std::vector<std::string>& handlers,
                                                  WebView::Delegate delegate) {
    const auto view = dynamic_cast<const ViewInMemory&>(superview).native();
    if (!view || isBroken) return nullptr;
    auto shown = std::make_shared<Shown>(Shown{handlers, std::move(delegate), {}, {}});
    mShown = shown;
    ++made;
    return std::make_unique<WebViewInMemory>(view, std::move(shown), *this, mTime);
}

}  // namespace merovanta::inmemory
