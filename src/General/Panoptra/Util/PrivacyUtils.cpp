#include "General/Panoptra/Util/PrivacyUtils.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr std::uint32_t opaqueBlack = 0xFF000000;

std::optional<long> parseTag(std::string_view text) {
    // A plus sign is part of a decimal number, but from_chars does not take it.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    long tag = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), tag);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return tag;
}

/// The view's frame is taken as if it were in the view's own coordinates. This shifts the area by the view's
/// place in its superview; hosts lay out private views at their superview's origin.
MaskArea areaOf(std::shared_ptr<View> view, const View& root) {
    const Rect area = view->convert(view->frame(), root);
    return {area, std::move(view)};
}

void addViewWithTag(const std::shared_ptr<View>& root, const std::string& entry,
                    std::vector<MaskArea>& areas) {
    const auto tag = parseTag(entry);
    if (!tag) {
        Log::warning("Cannot convert tag to integer");
        return;
    }
    if (auto view = ViewUtils::viewWithTag(root, *tag)) areas.push_back(areaOf(std::move(view), *root));
}

void addViewsOfClass(const View& root, const std::string& entry, std::vector<MaskArea>& areas) {
    auto views = ViewUtils::subviewsOfClass(root, entry);
    if (views.empty() && !platform::current().application().classExists(entry)) {
        Log::warning("Cannot convert class name to class");
        return;
    }
    for (auto& view : views)
        areas.push_back(areaOf(std::move(view), root));
}

/// The pixels [first, last) to be covered for an area between these two positions, in pixels. An edge that
/// falls between pixels covers one more: renderers round to either side of it.
std::pair<std::size_t, std::size_t> coveredPixels(double start, double end, std::size_t limit) {
    const auto bound = static_cast<double>(limit);
    // Positions that are no number mask the whole span: rather too much than too little.
    const double first = std::isnan(start) ? 0 : std::ceil(start) - (start == std::ceil(start) ? 0 : 2);
    const double last = std::isnan(end) ? bound : std::floor(end) + (end == std::floor(end) ? 0 : 2);
    return {static_cast<std::size_t>(std::clamp(first, 0.0, bound)),
            static_cast<std::size_t>(std::clamp(last, 0.0, bound))};
}

}  // namespace

std::optional<std::vector<MaskArea>> PrivacyUtils::maskAreas(const std::shared_ptr<View>& root,
                                                             const IOSConfig& config) {
    if (!root || !root->isAlive()) return std::nullopt;
    std::vector<MaskArea> areas;
    for (const auto& entry : config.blacklist)
        addViewWithTag(root, entry, areas);
    for (const auto& entry : config.blacklistClasses)
        addViewsOfClass(*root, entry, areas);
    return areas;
}

void PrivacyUtils::drawBlackRectangle(const Rect& area, double scale, PixelBuffer& picture) {
    // In pixels: the origin divided by the scale and multiplied by it again, the size only multiplied.
    const auto [left, right] = coveredPixels(area.x, area.x + area.width * scale, picture.width());
    const auto [top, bottom] = coveredPixels(area.y, area.y + area.height * scale, picture.height());
    if (left >= right) return;
    for (std::size_t y = top; y < bottom; ++y) {
        std::fill(picture.row(y) + left, picture.row(y) + right, opaqueBlack);
    }
}

}  // namespace merovanta
