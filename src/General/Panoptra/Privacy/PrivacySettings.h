#pragma once

namespace merovanta {

/// What the host has chosen about private views, for all of them.
struct PrivacySettings {
    /// Whether the rectangles by the service's own rule are painted beside the areas of the private views.
    bool paintsFixedRectangles = true;
    // Content that is covered wherever it is.
    bool masksTextInputs = false;
    bool masksTexts = false;
    bool masksPictures = false;
    /// Whether a developer sees what is covered.
    bool showsPreview = false;

    bool operator==(const PrivacySettings&) const = default;
};

}  // namespace merovanta
