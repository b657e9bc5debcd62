#include "Qt/Quick/GroundsQuick.h"

namespace merovanta::quick {

namespace {

/// Adds the area with these edges, if it is one.
void append(MaskArea area, double left, double top, double right, double bottom,
            std::vector<MaskArea>& areas) {
    area.rect = {left, top, right - left, bottom - top};
    if (left < right && top < bottom) areas.push_back(area);
}

}  // namespace

void GroundsQuick::appendVisible(const MaskArea& area, std::size_t grounds,
                                 std::vector<MaskArea>& visible) const {
    const bool isCover = area.kind == MaskArea::Kind::cover || area.kind == MaskArea::Kind::backdrop;
    const Rect& rect = area.rect;
    if (!isCover || grounds >= mGrounds.size()) return visible.push_back(area);
    const QRectF hidden = mGrounds[grounds] & QRectF(rect.x, rect.y, rect.width, rect.height);
    if (hidden.isEmpty()) return appendVisible(area, grounds + 1, visible);
    std::vector<MaskArea> parts;
    append(area, rect.x, rect.y, rect.x + rect.width, hidden.top(), parts);
    append(area, rect.x, hidden.bottom(), rect.x + rect.width, rect.y + rect.height, parts);
    append(area, rect.x, hidden.top(), hidden.left(), hidden.bottom(), parts);
    append(area, hidden.right(), hidden.top(), rect.x + rect.width, hidden.bottom(), parts);
    for (const MaskArea& part : parts)
        appendVisible(part, grounds + 1, visible);
}

}  // namespace merovanta::quick
