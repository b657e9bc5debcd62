#pragma once

#include "Platform/MaskPreview.h"

namespace merovanta {

/// What a developer is shown of the masks.
class PrivacyPreview {
 public:
    PrivacyPreview() = delete;

    /// Gives previews by the service's lists and the host's settings of the moment.
    [[nodiscard]] static MaskPreviewSource source();
};

}  // namespace merovanta
