#include "InMemory/CoverViewsInMemory.h"

#include "InMemory/SubviewInMemory.h"
#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

class CoverInMemory : public CoverView {
 public:
    CoverInMemory(const std::shared_ptr<NativeView>& parent, std::shared_ptr<NativeView> cover,
                  std::shared_ptr<std::function<void()>> dismissed)
        : mSubview(parent, std::move(cover), {"PassthroughUIImageView", "DefaultUIView"}),
          mDismissed(std::move(dismissed)) {}

    [[nodiscard]] std::shared_ptr<View> view() const override {
        return std::make_shared<ViewInMemory>(mSubview.native());
    }

 private:
    SubviewInMemory mSubview;
    std::shared_ptr<std::function<void()>> mDismissed;
};

}  // namespace

std::unique_ptr<CoverView> CoverViewsInMemory::create(const View& parent, const std::string& className,
                                                      std::function<void()> dismissed) {
    const auto view = dynamic_cast<const ViewInMemory&>(parent).native();
    if (!view) return nullptr;
    auto cover = NativeView::make({0, 0, view->frame.width, view->frame.height}, view->color, {className});
    auto shared = std::make_shared<std::function<void()>>(std::move(dismissed));
    mDismissed = shared;
    // Takes the touches, and runs this when it dies.
    const auto died = [time = mTime, weak = mDismissed](void* /*nothing*/) {
        time->post([weak] {
            if (const auto action = weak.lock()) (*action)();
        });
    };
    cover->onTap = [life = std::shared_ptr<void>(nullptr, died)] {};
    return std::make_unique<CoverInMemory>(view, std::move(cover), std::move(shared));
}

}  // namespace merovanta::inmemory
