#include "Qt/Quick/WidgetViewFactoryQuick.h"

#include <QtQuick/QQuickItem>
#include <utility>

#include "Qt/Quick/ViewQuick.h"
#include "Qt/Quick/WidgetViewQuick.h"

namespace merovanta::quick {

std::unique_ptr<WidgetView> WidgetViewFactoryQuick::create(const View& parent, WidgetView::Actions actions) {
    QQuickItem* const item = ViewQuick::itemInWindow(parent);
    if (item == nullptr) return nullptr;
    auto widget = std::make_unique<WidgetViewQuick>(std::move(actions));
    if (!widget->load(*item)) return nullptr;
    return widget;
}

}  // namespace merovanta::quick
