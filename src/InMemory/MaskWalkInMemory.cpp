#include "InMemory/MaskWalkInMemory.h"

#include <algorithm>
#include <cmath>

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

namespace {

struct Walk {
    const ViewInMemory& root;
    double scale;
    MaskJudge& judge;
    bool anyMarked = false;
    std::vector<MaskArea> areas;

    /// In whole pixels: outwards, and inwards for what is exempt.
    [[nodiscard]] Rect inPixels(const Rect& area, bool isExempt) const {
        const auto begin = [&](double edge) {
            return isExempt ? std::ceil(edge * scale) : std::floor(edge * scale);
        };
        const auto end = [&](double edge) {
            return isExempt ? std::floor(edge * scale) : std::ceil(edge * scale);
        };
        const double x = begin(area.x);
        const double y = begin(area.y);
        return {x, y, end(area.x + area.width) - x, end(area.y + area.height) - y};
    }

    void visit(const std::shared_ptr<NativeView>& view, const Point& origin, const Rect& shown) {
        std::vector<std::size_t> entries;
        for (const auto& name : view->classNames) {
            if (const auto entry = judge.classEntry(name)) entries.push_back(*entry);
        }
        const MaskVerdict verdict = judge.enter(
            {.tag = view->tag, .masked = view->masked, .content = view->content, .classEntries = &entries});
        const Rect area = intersection({origin.x, origin.y, view->frame.width, view->frame.height}, shown);
        const bool isExempt = verdict.kind == MaskArea::Kind::exempt;
        if (verdict.reason || isExempt)
            areas.push_back({inPixels(area, isExempt), verdict.kind, verdict.reason.value_or(MaskReason())});
        if (verdict.paintsFixed) {
            areas.push_back({ViewInMemory(view).convert(view->frame, root), MaskArea::Kind::fixed,
                             verdict.reason.value_or(MaskReason())});
        }
        for (const auto& subview : view->subviews) {
            visit(subview, {origin.x + subview->frame.x, origin.y + subview->frame.y},
                  view->clips ? area : shown);
        }
        judge.leave();
    }
};

bool isAnyMarked(const NativeView& view) {
    return view.masked.value_or(false) || std::any_of(view.subviews.begin(), view.subviews.end(),
                                                      [](const auto& inner) { return isAnyMarked(*inner); });
}

}  // namespace

Rect intersection(const Rect& one, const Rect& other) {
    const double left = std::max(one.x, other.x);
    const double top = std::max(one.y, other.y);
    const double right = std::min(one.x + one.width, other.x + other.width);
    const double bottom = std::min(one.y + one.height, other.y + other.height);
    return {left, top, std::max(right - left, 0.0), std::max(bottom - top, 0.0)};
}

std::vector<MaskArea> findMasks(const std::shared_ptr<NativeView>& root, double scale, MaskJudge& judge) {
    judge.begin(isAnyMarked(*root));
    const ViewInMemory handle(root);
    Walk walk{.root = handle, .scale = scale, .judge = judge};
    walk.visit(root, {}, {0, 0, root->frame.width, root->frame.height});
    return std::move(walk.areas);
}

}  // namespace merovanta::inmemory
