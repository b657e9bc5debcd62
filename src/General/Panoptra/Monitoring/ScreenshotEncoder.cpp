#include "General/Panoptra/Monitoring/ScreenshotEncoder.h"

#include <utility>

#include "General/Panoptra/Util/ImageUtils.h"

namespace merovanta {

std::optional<std::string> ScreenshotEncoder::encode(const MaskedFrame& frame) {
    ImageUtils::shrinkToThird(frame.pixels(), mSmall);
    if (mSmall == mLastSmall) return std::nullopt;
    auto picture = mJpegEncoder.encode(mSmall, jpegQuality);
    if (picture) std::swap(mSmall, mLastSmall);
    return picture;
}

void ScreenshotEncoder::reset() {
    mLastSmall.resize(0, 0);
}

}  // namespace merovanta
