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

/// The pixels [first, last) that the span [start, start + length) of points touches.
std::pair<std::size_t, std::size_t> touchedPixels(double start, double length, double scale,
                                                  std::size_t limit) {
    const auto bound = static_cast<double>(limit);
    // Positions that are no number mask the whole span: rather too much than too little.
    const double first = std::isnan(start) ? 0 : std::clamp(std::floor(start * scale), 0.0, bound);
    const double end = (start + length) * scale;
    const double last = std::isnan(end) ? bound : std::clamp(std::ceil(end), 0.0, bound);
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(last)};
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
    const auto [left, right] = touchedPixels(area.x / scale, area.width, scale, picture.width());
    const auto [top, bottom] = touchedPixels(area.y / scale, area.height, scale, picture.height());
    if (left >= right) return;
    for (std::size_t y = top; y < bottom; ++y) {
        std::fill(picture.row(y) + left, picture.row(y) + right, opaqueBlack);
    }
}

}  // namespace merovanta
