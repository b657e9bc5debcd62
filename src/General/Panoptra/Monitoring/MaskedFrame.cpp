#include "General/Panoptra/Monitoring/MaskedFrame.h"

#include "General/Panoptra/Util/PrivacyUtils.h"

namespace merovanta {

MaskedFrame::MaskedFrame(CapturedFrame frame) : mPixels(std::move(frame.pixels)) {
    for (const MaskArea& area : frame.masks)
        PrivacyUtils::drawBlackRectangle(area.rect, frame.scale, mPixels);
}

}  // namespace merovanta
