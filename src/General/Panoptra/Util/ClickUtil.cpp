#include "General/Panoptra/Util/ClickUtil.h"

#include "General/Log.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

void ClickUtil::playBack(const Click& click) {
    Platform& platform = platform::current();
    const double scale = platform.application().mainScreen().scale;
    const Point point{static_cast<double>(click.x) / scale, static_cast<double>(click.y) / scale};
    const auto root = ViewUtils::rootView();
    if (!root || !platform.tapPlayer().tap(*root, point)) Log::warning("View not found");
}

}  // namespace merovanta
