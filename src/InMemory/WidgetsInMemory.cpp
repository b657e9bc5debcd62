#include "InMemory/WidgetsInMemory.h"

#include <utility>

#include "InMemory/SubviewInMemory.h"
#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

class WidgetInMemory : public WidgetView {
 public:
    WidgetInMemory(const std::shared_ptr<NativeView>& parent, const std::string& className,
                   std::shared_ptr<WidgetsInMemory::Shown> shown)
        : mSubview(parent, NativeView::make({300, 100, 90, 200}, 0xFF303030, {className})),
          mShown(std::move(shown)) {}

    [[nodiscard]] std::shared_ptr<View> view() const override {
        return std::make_shared<ViewInMemory>(mSubview.native());
    }
    void setText(const std::string& text) override { mShown->text = text; }
    void setHidden(Element element, bool isHidden) override {
        if (isHidden) {
            mShown->hidden.insert(element);
        } else {
            mShown->hidden.erase(element);
        }
    }

 private:
    SubviewInMemory mSubview;
    std::shared_ptr<WidgetsInMemory::Shown> mShown;
};

}  // namespace

std::unique_ptr<WidgetView> WidgetsInMemory::create(const View& parent, WidgetView::Actions actions) {
    const auto view = dynamic_cast<const ViewInMemory&>(parent).native();
    if (!view || className.empty()) return nullptr;
    auto shown = std::make_shared<Shown>();
    shown->actions = std::move(actions);
    mShown = shown;
    ++made;
    return std::make_unique<WidgetInMemory>(view, className, std::move(shown));
}

}  // namespace merovanta::inmemory
