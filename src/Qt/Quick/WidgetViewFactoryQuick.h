#pragma once

#include "Platform/WidgetView.h"

namespace merovanta::quick {

class WidgetViewFactoryQuick final : public WidgetViewFactory {
 public:
    [[nodiscard]] std::unique_ptr<WidgetView> create(const View& parent,
                                                     WidgetView::Actions actions) override;
};

}  // namespace merovanta::quick
