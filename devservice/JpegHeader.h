#pragma once

#include <optional>
#include <string_view>

namespace merovanta::devservice {

struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

/// The size of a JPEG picture, read from its markers without decoding it; nothing when the bytes are no whole
/// JPEG or the picture is larger than any screen (8192 pixels a side, 32 megapixels).
std::optional<PictureSize> jpegSize(std::string_view bytes);

}  // namespace merovanta::devservice
