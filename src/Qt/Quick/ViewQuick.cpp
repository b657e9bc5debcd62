#include "Qt/Quick/ViewQuick.h"

#include "Qt/Quick/ClassNamesQuick.h"
#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/PopupsQuick.h"
#include "Qt/Quick/PrivateTapsQuick.h"
#include "Qt/Quick/SceneGraphQuick.h"

namespace merovanta::quick {

ViewQuick::ViewQuick(QQuickItem* item) : mItem(item) {}

QQuickItem* ViewQuick::itemOf(const View& view) {
    const auto* const own = dynamic_cast<const ViewQuick*>(&view);
    return own == nullptr ? nullptr : own->mItem.data();
}

QQuickItem* ViewQuick::itemInWindow(const View& view) {
    QQuickItem* const item = itemOf(view);
    return item == nullptr || item->window() == nullptr ? nullptr : item;
}

bool ViewQuick::isAlive() const {
    return !mItem.isNull();
}

const void* ViewQuick::identity() const {
    return mItem.data();
}

std::string ViewQuick::className() const {
    if (!mItem) return {};
    const QObject* const popup = popupShownBy(*mItem);
    return ClassNamesQuick::className(popup == nullptr ? *mItem : *popup);
}

bool ViewQuick::isKindOf(std::string_view name) const {
    return mItem && ClassNamesQuick::instance().isKindOf(*mItem, name);
}

long ViewQuick::tag() const {
    if (!mItem) return 0;
    const auto tagOf = [](const QObject& object) {
        const MarksQuick* const marks = MerovantaQuick::marksOf(object);
        return marks == nullptr ? 0 : marks->tag;
    };
    const int tag = tagOf(*mItem);
    const QObject* const popup = tag == 0 ? popupShownBy(*mItem) : nullptr;
    return popup == nullptr ? tag : tagOf(*popup);
}

Rect ViewQuick::frame() const {
    if (!mItem) return {};
    return {mItem->x(), mItem->y(), mItem->width(), mItem->height()};
}

Rect ViewQuick::bounds() const {
    if (!mItem) return {};
    return {0, 0, mItem->width(), mItem->height()};
}

std::vector<std::shared_ptr<View>> ViewQuick::subviews() const {
    std::vector<std::shared_ptr<View>> views;
    if (!mItem) return views;
    const auto children = inPaintOrder(*mItem);
    views.reserve(static_cast<std::size_t>(children.size()));
    for (QQuickItem* child : children) {
        if (mayBePainted(*child)) views.push_back(std::make_shared<ViewQuick>(child));
    }
    return views;
}

bool ViewQuick::keepsTapPrivate(const Point& point) const {
    if (!mItem || mItem->window() == nullptr) return false;
    return areTapsPrivateAt(*mItem->window(), mItem->mapToScene({point.x, point.y}));
}

Rect ViewQuick::convert(const Rect& rect, const View& target) const {
    const QQuickItem* const other = itemOf(target);
    if (!mItem || other == nullptr) return {};
    const QRectF mapped = mItem->mapRectToItem(other, QRectF(rect.x, rect.y, rect.width, rect.height));
    return {mapped.x(), mapped.y(), mapped.width(), mapped.height()};
}

}  // namespace merovanta::quick
