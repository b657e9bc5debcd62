#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace merovanta {

/// A picture in device pixels: one 32-bit word a pixel, 0xffRRGGBB in the machine's byte order (little-endian
/// bytes B, G, R, X), rows top to bottom without gaps. Made to be moved around and reused: resizing to a size
/// that was reached before allocates nothing.
class PixelBuffer {
 public:
    void resize(std::size_t width, std::size_t height) {
        mWidth = width;
        mHeight = height;
        mPixels.resize(width * height);
    }

    [[nodiscard]] std::size_t width() const { return mWidth; }
    [[nodiscard]] std::size_t height() const { return mHeight; }
    [[nodiscard]] bool isEmpty() const { return mWidth == 0 || mHeight == 0; }

    [[nodiscard]] std::uint32_t* row(std::size_t y) { return mPixels.data() + y * mWidth; }
    [[nodiscard]] const std::uint32_t* row(std::size_t y) const { return mPixels.data() + y * mWidth; }

    bool operator==(const PixelBuffer&) const = default;

 private:
    std::size_t mWidth = 0;
    std::size_t mHeight = 0;
    std::vector<std::uint32_t> mPixels;
};

}  // namespace merovanta
