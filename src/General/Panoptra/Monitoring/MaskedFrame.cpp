#include "General/Panoptra/Monitoring/MaskedFrame.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "General/Panoptra/Util/PrivacyUtils.h"

namespace merovanta {

namespace {

constexpr std::uint32_t opaqueBlack = 0xFF000000;

/// Calls the action with the beginning and the end of each row of the area, as far as it is in the picture.
template <typename Action>
void forEachRow(const Rect& area, const PixelBuffer& picture, Action action) {
    const auto bounded = [](double edge, std::size_t limit) {
        // An edge that is no number: rather too much than too little.
        return static_cast<std::size_t>(std::clamp(edge, 0.0, static_cast<double>(limit)));
    };
    const std::size_t left = std::isnan(area.x) ? 0 : bounded(area.x, picture.width());
    const std::size_t top = std::isnan(area.y) ? 0 : bounded(area.y, picture.height());
    const double right = area.x + area.width;
    const double bottom = area.y + area.height;
    const std::size_t rightEnd = std::isnan(right) ? picture.width() : bounded(right, picture.width());
    const std::size_t bottomEnd = std::isnan(bottom) ? picture.height() : bounded(bottom, picture.height());
    if (left >= rightEnd) return;
    for (std::size_t y = top; y < bottomEnd; ++y)
        action(y, left, rightEnd);
}

void blacken(const Rect& area, PixelBuffer& picture) {
    forEachRow(area, picture, [&picture](std::size_t y, std::size_t left, std::size_t right) {
        std::fill(picture.row(y) + left, picture.row(y) + right, opaqueBlack);
    });
}

/// Blackens what is left of the backdrops once what is exempt in front of them is taken out.
void blackenBackdrops(const std::vector<MaskArea>& areas, PixelBuffer& picture) {
    std::vector<std::uint8_t> covered(picture.width() * picture.height());
    for (const MaskArea& area : areas) {
        if (area.kind != MaskArea::Kind::backdrop && area.kind != MaskArea::Kind::exempt) continue;
        const std::uint8_t value = area.kind == MaskArea::Kind::backdrop ? 1 : 0;
        forEachRow(area.rect, picture, [&](std::size_t y, std::size_t left, std::size_t right) {
            std::fill_n(covered.data() + y * picture.width() + left, right - left, value);
        });
    }
    for (std::size_t y = 0; y < picture.height(); ++y) {
        const std::uint8_t* const row = covered.data() + y * picture.width();
        for (std::size_t x = 0; x < picture.width(); ++x) {
            if (row[x] != 0) picture.row(y)[x] = opaqueBlack;
        }
    }
}

}  // namespace

MaskedFrame::MaskedFrame(CapturedFrame frame) : mPixels(std::move(frame.pixels)) {
    const auto& areas = frame.masks;
    const bool hasExempt = std::any_of(
        areas.begin(), areas.end(), [](const MaskArea& area) { return area.kind == MaskArea::Kind::exempt; });
    if (hasExempt) blackenBackdrops(areas, mPixels);
    for (const MaskArea& area : areas) {
        switch (area.kind) {
            case MaskArea::Kind::fixed:
                PrivacyUtils::drawBlackRectangle(area.rect, frame.scale, mPixels);
                break;
            case MaskArea::Kind::cover:
                blacken(area.rect, mPixels);
                break;
            case MaskArea::Kind::backdrop:
                if (!hasExempt) blacken(area.rect, mPixels);
                break;
            case MaskArea::Kind::exempt:
                break;
        }
    }
}

}  // namespace merovanta
