#include "General/Panoptra/Network/Message/Bidirectional/Drawings.h"

#include <algorithm>
#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/PngDecoder.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

// Of all drawings together: one of the largest screens full, or several of a usual one.
constexpr std::size_t maximumPixels = PngDecoder::maximumPixels;
constexpr std::size_t maximumDrawings = 10;
// Each is stretched over the whole screen: a smaller one is no drawing but a curtain.
constexpr std::size_t minimumSide = 8;

std::shared_ptr<View> keyWindowView() {
    const auto controller = platform::current().application().keyWindowRootViewController();
    return controller ? controller->view() : nullptr;
}

}  // namespace

void Drawings::show(std::string png) {
    assertMainThread();
    const auto size = PngDecoder::size(png);
    if (!size) {
        Log::warning("Cannot read drawing");
        return;
    }
    if (std::min(size->width, size->height) < minimumSide) {
        Log::warning("Drawing is too small");
        return;
    }
    if (mDrawings.size() == maximumDrawings || size->pixelCount() > maximumPixels - mPixelCount) {
        Log::warning("Too many drawings");
        return;
    }
    mPixelCount += size->pixelCount();
    mDrawings.push_back({.pixelCount = size->pixelCount()});
    const Place place = std::prev(mDrawings.end());
    platform::current().workQueue().async([weak = weak_from_this(), place, png = std::move(png)] {
        auto pixels = std::make_shared<PixelBuffer>(PngDecoder::decode(png).value_or(PixelBuffer()));
        ViewUtils::runOnMainQueue([weak, place, pixels = std::move(pixels)] {
            if (const auto self = weak.lock()) self->unpacked(place, std::move(*pixels));
        });
    });
}

void Drawings::unpacked(Place place, PixelBuffer pixels) {
    assertMainThread();
    const auto view = keyWindowView();
    if (view && !pixels.isEmpty())
        place->overlay = platform::current().imageOverlays().show(*view, std::move(pixels), 0.5);
    if (!place->overlay) {
        Log::warning("Cannot show drawing");
        remove(place);
        return;
    }
    place->timer = platform::current().timers().schedule(seconds(drawingTimeout), false,
                                                         [this, place] { remove(place); });
}

void Drawings::remove(Place place) {
    mPixelCount -= place->pixelCount;
    mDrawings.erase(place);
}

}  // namespace merovanta
