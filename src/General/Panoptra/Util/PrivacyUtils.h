#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/IOSConfig.h"
#include "Platform/PixelBuffer.h"
#include "Platform/ScreenCapture.h"
#include "Platform/View.h"

namespace merovanta {

/// Finds the private areas of a screen and blacks them out.
///
/// Finding runs while the view tree stands still: on the main thread, or on a render thread while that is
/// blocked.
class PrivacyUtils {
 public:
    PrivacyUtils() = delete;

    /// The private areas below the root view, for each entry of the tag list, then of the class list, in the
    /// root view's points. An entry that names nothing known is logged and skipped. Absent, so that no
    /// picture leaves, if the root view is gone.
    [[nodiscard]] static std::optional<std::vector<MaskArea>> maskAreas(const std::shared_ptr<View>& root,
                                                                        const IOSConfig& config);

    /// Fills the area with opaque black. Deliberately, only the area's origin is divided by the picture's
    /// scale and its size is not. Parts outside the picture are ignored. An edge that falls between two
    /// pixels covers both and one more.
    static void drawBlackRectangle(const Rect& area, double scale, PixelBuffer& picture);
};

}  // namespace merovanta
