#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

#include "Platform/View.h"

namespace merovanta::quick {

/// A QQuickItem as a view.
class MEROVANTA_INTERNAL ViewQuick final : public View {
 public:
    explicit ViewQuick(QQuickItem* item);

    /// The item of a view of this toolkit; null if it is dead or another toolkit's.
    [[nodiscard]] static QQuickItem* itemOf(const View& view);

    /// As itemOf(); null as well if the item is in no window.
    [[nodiscard]] static QQuickItem* itemInWindow(const View& view);

    [[nodiscard]] bool isAlive() const override;
    [[nodiscard]] const void* identity() const override;
    [[nodiscard]] std::string className() const override;
    [[nodiscard]] bool isKindOf(std::string_view name) const override;
    [[nodiscard]] long tag() const override;
    [[nodiscard]] Rect frame() const override;
    [[nodiscard]] Rect bounds() const override;
    [[nodiscard]] std::vector<std::shared_ptr<View>> subviews() const override;
    [[nodiscard]] bool keepsTapPrivate(const Point& point) const override;
    [[nodiscard]] Rect convert(const Rect& rect, const View& target) const override;

 private:
    QPointer<QQuickItem> mItem;
};

}  // namespace merovanta::quick
