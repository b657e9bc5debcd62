#include "JpegHeader.h"

#include <cstddef>

namespace merovanta::devservice {
namespace {

constexpr int kMaxSide = 8192;
constexpr int kMaxPixels = 32'000'000;
constexpr int kMaxSegments = 128;

constexpr unsigned kStartOfImage = 0xFFD8;
constexpr unsigned kEndOfImage = 0xFFD9;
constexpr unsigned kStartOfScan = 0xFFDA;

unsigned bigEndian16(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]) * 256U + static_cast<unsigned char>(bytes[at + 1]);
}

// Frame headers are C0 to CF, except the Huffman table (C4), the reserved code (C8) and arithmetic coding
// (CC).
bool isFrameHeader(unsigned marker) {
    return marker >= 0xFFC0 && marker <= 0xFFCF && marker != 0xFFC4 && marker != 0xFFC8 && marker != 0xFFCC;
}

std::optional<PictureSize> acceptable(PictureSize size) {
    const bool fits = size.width > 0 && size.height > 0 && size.width <= kMaxSide &&
                      size.height <= kMaxSide && size.width * size.height <= kMaxPixels;
    return fits ? std::optional(size) : std::nullopt;
}

}  // namespace

std::optional<PictureSize> jpegSize(std::string_view bytes) {
    if (bytes.size() < 4 || bigEndian16(bytes, 0) != kStartOfImage ||
        bigEndian16(bytes, bytes.size() - 2) != kEndOfImage) {
        return std::nullopt;
    }
    std::optional<PictureSize> size;
    std::size_t at = 2;
    for (int segment = 0; segment < kMaxSegments && at + 4 <= bytes.size(); ++segment) {
        const unsigned marker = bigEndian16(bytes, at);
        const std::size_t length = bigEndian16(bytes, at + 2);
        if (marker < 0xFFC0 || length < 2 || at + 2 + length > bytes.size()) return std::nullopt;
        if (marker == kStartOfScan) return size;
        if (isFrameHeader(marker)) {
            if (length < 8) return std::nullopt;
            size = acceptable(
                {static_cast<int>(bigEndian16(bytes, at + 7)), static_cast<int>(bigEndian16(bytes, at + 5))});
            if (!size) return std::nullopt;
        }
        at += 2 + length;
    }
    return std::nullopt;
}

}  // namespace merovanta::devservice
