#include "General/Panoptra/Util/ClickUtil.h"

#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

void ClickUtil::playBack(const Click& click) {
    Platform& platform = platform::current();
    const double scale = platform.application().mainScreen().scale;
    const Point point{static_cast<double>(click.x) / scale, static_cast<double>(click.y) / scale};
    const auto root = ViewUtils::rootView();
    if (root && root->keepsTapPrivate(point)) {
        static bool hasWarned = false;
        if (!std::exchange(hasWarned, true))
            Log::warning("Clicks in views that keep their taps private are not played back");
        return;
    }
    if (!root || !platform.tapPlayer().tap(*root, point)) Log::warning("View not found");
}

}  // namespace merovanta
