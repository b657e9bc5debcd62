#pragma once

#include <memory>
#include <set>
#include <string>

#include "InMemory/NativeView.h"
#include "Platform/WidgetView.h"

namespace merovanta::inmemory {

/// Widgets that show nothing but what is known of them.
class WidgetsInMemory : public WidgetViewFactory {
 public:
    [[nodiscard]] std::unique_ptr<WidgetView> create(const View& parent,
                                                     WidgetView::Actions actions) override;

    /// A widget as its user sees it.
    struct Shown {
        std::string text;
        std::set<WidgetView::Element> hidden;
        WidgetView::Actions actions;
    };

    /// The widget made last; null once it is gone.
    [[nodiscard]] std::shared_ptr<Shown> shown() const { return mShown.lock(); }

    /// How many were made.
    int made = 0;
    /// The class of the next widgets; empty makes create() fail.
    std::string className = "DefaultUIView";

 private:
    std::weak_ptr<Shown> mShown;
};

}  // namespace merovanta::inmemory
