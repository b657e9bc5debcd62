#pragma once

#include <string>

#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "Platform/Geometry.h"
#include "Platform/PixelBuffer.h"

namespace merovanta {

/// What is to be said and painted about private views.
class PrivacyUtils {
 public:
    PrivacyUtils() = delete;

    /// Logs a warning for each entry of the lists that names nothing known. Thread: main.
    static void logBadEntries(const PrivacyJudge& judge);

    /// How many views the judge has found private, by which entries, and which entries matched nothing; on
    /// one line of bounded length.
    [[nodiscard]] static std::string summary(const PrivacyJudge& judge);

    /// Fills the area with opaque black. Deliberately, only the area's origin is divided by the picture's
    /// scale and its size is not. Parts outside the picture are ignored. An edge that falls between two
    /// pixels covers both and one more.
    static void drawBlackRectangle(const Rect& area, double scale, PixelBuffer& picture);
};

}  // namespace merovanta
